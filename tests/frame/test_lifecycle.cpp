#include "FrameTestSupport.h"

#include <vorn/host/VornCore.h>
#include <vorn/host/VornModelQt4.h>
#include <vorn/host/VornParameters.h>
#include <vorn/lib/VornParametersQt4.h>
#include <vorn/lib/private/InstallationRoot.h>
#include <vorn/lib/private/LibraryInitController.h>
#include <vorn/lib/private/LibraryInitControllerInternal.h>
#include <vorn/lib/private/Logging.h>
#include <vorn/platform/NativeSync.h>

#include <gtest/gtest.h>

#include <iostream>
#include <sstream>
#include <string>
#include <vector>

using namespace vorn::test;
using vorn::core::LibraryDependency;

namespace {

std::vector<std::string> g_calls;

void recordCoreInit()
{
    g_calls.push_back("core init");
    VornCoreInit();
}
void recordCoreDeinit()
{
    g_calls.push_back("core deinit");
    VornCoreDeinit();
}
void recordParametersInit()
{
    g_calls.push_back("parameters init");
    VornParametersInit();
}
void recordParametersDeinit()
{
    g_calls.push_back("parameters deinit");
    VornParametersDeinit();
}
void recordModelInit()
{
    g_calls.push_back("model init");
    VornModelQt4Init();
}
void recordModelDeinit()
{
    g_calls.push_back("model deinit");
    VornModelQt4Deinit();
}

const LibraryDependency kRecordingDependencies[] = {
    {&recordCoreInit, &recordCoreDeinit},
    {&recordParametersInit, &recordParametersDeinit},
    {&recordModelInit, &recordModelDeinit},
};

void recordA()
{
    g_calls.push_back("a init");
}
void recordADeinit()
{
    g_calls.push_back("a deinit");
}
void recordB()
{
    g_calls.push_back("b init");
}
void recordBDeinit()
{
    g_calls.push_back("b deinit");
}

// A dependency whose init comes back into the controller on the same thread.
void reentrantInit()
{
    g_calls.push_back("reentrant init");
    LibraryInitController::initDependency(&recordA, &recordADeinit);
    g_calls.push_back("use count " + std::to_string(LibraryInitController::useCount()));
}

// The family libraries' call counters, to compare before and after.
struct FamilyCalls
{
    unsigned long long coreInits = VornCoreInitCalls();
    unsigned long long coreDeinits = VornCoreDeinitCalls();
    unsigned long long parametersInits = VornParametersInitCalls();
    unsigned long long parametersDeinits = VornParametersDeinitCalls();
    unsigned long long modelInits = VornModelQt4InitCalls();
    unsigned long long modelDeinits = VornModelQt4DeinitCalls();
};

class LifecycleTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_EQ(LibraryInitController::useCount(), 0u);
        g_calls.clear();
    }
    void TearDown() override
    {
        vorn::core::setLibraryDependencies(nullptr, 0);
        vorn::core::setLibraryInitTrace(false);
        EXPECT_EQ(LibraryInitController::useCount(), 0u);
        EXPECT_FALSE(LibraryInitController::hasInstance());
    }
};

// The address a trace line names, after "Instance: ".
std::string instanceOf(const std::string& line)
{
    const std::string marker = "Instance: ";
    const std::size_t start = line.find(marker);
    if (start == std::string::npos)
        return std::string();
    const std::size_t end = line.find(' ', start + marker.size());
    return line.substr(start + marker.size(),
                       end == std::string::npos ? std::string::npos : end - start - marker.size());
}

} // namespace

TEST_F(LifecycleTest, theDependenciesAreTheCoreParameterAndModelLibrariesInThatOrder)
{
    // Told apart by their effect: a function's address may be an import stub on Windows.
    std::size_t count = 0;
    const LibraryDependency* dependencies = vorn::core::libraryDependencies(&count);
    ASSERT_EQ(count, 3u);
    const FamilyCalls before;
    dependencies[0].init();
    EXPECT_EQ(VornCoreInitCalls(), before.coreInits + 1);
    dependencies[1].init();
    EXPECT_EQ(VornParametersInitCalls(), before.parametersInits + 1);
    dependencies[2].init();
    EXPECT_EQ(VornModelQt4InitCalls(), before.modelInits + 1);
    dependencies[0].deinit();
    EXPECT_EQ(VornCoreDeinitCalls(), before.coreDeinits + 1);
    dependencies[1].deinit();
    EXPECT_EQ(VornParametersDeinitCalls(), before.parametersDeinits + 1);
    dependencies[2].deinit();
    EXPECT_EQ(VornModelQt4DeinitCalls(), before.modelDeinits + 1);
    EXPECT_EQ(VornCoreInitCalls(), before.coreInits + 1) << "each entry calls one library only";
    EXPECT_EQ(VornParametersInitCalls(), before.parametersInits + 1);
}

TEST_F(LifecycleTest, firstInitCountsOneCreatesTheInstanceAndInitialisesCoreParametersModel)
{
    vorn::core::setLibraryDependencies(kRecordingDependencies, 3);
    const FamilyCalls before;
    VornParametersQt4Init();
    EXPECT_EQ(LibraryInitController::useCount(), 1u);
    EXPECT_TRUE(LibraryInitController::hasInstance());
    EXPECT_EQ(g_calls, (std::vector<std::string>{"core init", "parameters init", "model init"}));
    EXPECT_EQ(VornCoreInitCalls(), before.coreInits + 1);
    EXPECT_EQ(VornParametersInitCalls(), before.parametersInits + 1);
    EXPECT_EQ(VornModelQt4InitCalls(), before.modelInits + 1);
    EXPECT_EQ(VornCoreDeinitCalls(), before.coreDeinits);
    VornParametersQt4Deinit();
}

TEST_F(LifecycleTest, twoInitsAndTwoDeinitsDeinitialiseEverythingOnlyAtTheLastModelFirst)
{
    vorn::core::setLibraryDependencies(kRecordingDependencies, 3);
    const FamilyCalls before;
    VornParametersQt4Init();
    VornParametersQt4Init();
    EXPECT_EQ(LibraryInitController::useCount(), 2u);
    EXPECT_EQ(VornCoreInitCalls(), before.coreInits + 2);
    EXPECT_EQ(VornParametersInitCalls(), before.parametersInits + 2);
    EXPECT_EQ(VornModelQt4InitCalls(), before.modelInits + 2);

    g_calls.clear();
    VornParametersQt4Deinit();
    EXPECT_EQ(LibraryInitController::useCount(), 1u);
    EXPECT_TRUE(g_calls.empty());
    EXPECT_EQ(VornCoreDeinitCalls(), before.coreDeinits);
    EXPECT_TRUE(LibraryInitController::hasInstance());

    VornParametersQt4Deinit();
    EXPECT_EQ(g_calls, (std::vector<std::string>{"model deinit", "parameters deinit", "core deinit",
                                                 "model deinit", "parameters deinit", "core deinit"}));
    EXPECT_EQ(VornCoreDeinitCalls(), before.coreDeinits + 2);
    EXPECT_EQ(VornParametersDeinitCalls(), before.parametersDeinits + 2);
    EXPECT_EQ(VornModelQt4DeinitCalls(), before.modelDeinits + 2);
}

TEST_F(LifecycleTest, theRealDependenciesSeeAsManyDeinitsAsInits)
{
    const FamilyCalls before;
    for (int i = 0; i < 3; ++i)
        VornParametersQt4Init();
    for (int i = 0; i < 3; ++i)
        VornParametersQt4Deinit();
    EXPECT_EQ(VornCoreInitCalls() - before.coreInits, 3u);
    EXPECT_EQ(VornCoreDeinitCalls() - before.coreDeinits, 3u);
    EXPECT_EQ(VornParametersInitCalls() - before.parametersInits, 3u);
    EXPECT_EQ(VornParametersDeinitCalls() - before.parametersDeinits, 3u);
    EXPECT_EQ(VornModelQt4InitCalls() - before.modelInits, 3u);
    EXPECT_EQ(VornModelQt4DeinitCalls() - before.modelDeinits, 3u);
}

TEST_F(LifecycleTest, initDependencyRemembersTheDeinitAtTheFrontAndCallsTheInit)
{
    LibraryInitController::init();
    LibraryInitController::initDependency(&recordA, &recordADeinit);
    LibraryInitController::initDependency(&recordB, &recordBDeinit);
    EXPECT_EQ(g_calls, (std::vector<std::string>{"a init", "b init"}));
    g_calls.clear();
    LibraryInitController::deinit();
    EXPECT_EQ(g_calls, (std::vector<std::string>{"b deinit", "a deinit"}));
}

TEST_F(LifecycleTest, initDependencyWithoutAnInstanceCallsTheInitButRemembersNothing)
{
    LibraryInitController::initDependency(&recordA, &recordADeinit);
    EXPECT_EQ(g_calls, (std::vector<std::string>{"a init"}));
    g_calls.clear();
    LibraryInitController::init();
    LibraryInitController::deinit();
    EXPECT_TRUE(g_calls.empty());
}

TEST_F(LifecycleTest, aDependencyInitMayComeBackIntoTheControllerOnTheSameThread)
{
    LibraryInitController::init();
    LibraryInitController::initDependency(&reentrantInit, &recordBDeinit);
    EXPECT_EQ(g_calls, (std::vector<std::string>{"reentrant init", "a init", "use count 1"}));
    g_calls.clear();
    LibraryInitController::deinit();
    EXPECT_EQ(g_calls, (std::vector<std::string>{"a deinit", "b deinit"}));
}

TEST_F(LifecycleTest, theTraceSwitchWritesCreateInitDeinitAndDestroyInOrder)
{
    vorn::core::setLibraryInitTrace(true);
    std::ostringstream captured;
    std::streambuf* original = std::cout.rdbuf(captured.rdbuf());
    VornParametersQt4Init();
    VornParametersQt4Deinit();
    std::cout.rdbuf(original);

    std::vector<std::string> lines;
    std::istringstream in(captured.str());
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    ASSERT_EQ(lines.size(), 4u) << captured.str();
    const std::string instance = instanceOf(lines[0]);
    ASSERT_FALSE(instance.empty());
    EXPECT_EQ(lines[0], "LibraryInitController [Create ] - Instance: " + instance);
    EXPECT_EQ(lines[1], "LibraryInitController [Init   ] - Instance: " + instance + " - Use Count: 1");
    EXPECT_EQ(lines[2], "LibraryInitController [Deinit ] - Instance: " + instance + " - Use Count: 0");
    EXPECT_EQ(lines[3], "LibraryInitController [Destroy] - Instance: " + instance);
}

TEST_F(LifecycleTest, theTraceSwitchIsOffUnlessTurnedOn)
{
    EXPECT_FALSE(vorn::core::libraryInitTrace());
    std::ostringstream captured;
    std::streambuf* original = std::cout.rdbuf(captured.rdbuf());
    VornParametersQt4Init();
    VornParametersQt4Deinit();
    std::cout.rdbuf(original);
    EXPECT_EQ(captured.str(), "");
}

TEST_F(LifecycleTest, aSecondInitTracesOnlyItsInitLine)
{
    VornParametersQt4Init();
    vorn::core::setLibraryInitTrace(true);
    std::ostringstream captured;
    std::streambuf* original = std::cout.rdbuf(captured.rdbuf());
    VornParametersQt4Init();
    VornParametersQt4Deinit();
    std::cout.rdbuf(original);
    vorn::core::setLibraryInitTrace(false);
    VornParametersQt4Deinit();
    const std::string text = captured.str();
    EXPECT_NE(text.find("[Init   ]"), std::string::npos);
    EXPECT_NE(text.find(" - Use Count: 2\n"), std::string::npos);
    EXPECT_NE(text.find("[Deinit ]"), std::string::npos);
    EXPECT_NE(text.find(" - Use Count: 1\n"), std::string::npos);
    EXPECT_EQ(text.find("[Create ]"), std::string::npos);
    EXPECT_EQ(text.find("[Destroy]"), std::string::npos);
}

TEST_F(LifecycleTest, lifecycleLinesReachAnInstalledDispatcherWithTheCountAfterInitAndBeforeDeinit)
{
    // Point the installation root at a temporary one that holds the dispatcher; the logging facility
    // created by the init finds it there.
    TemporaryDirectory root;
    installModules(root.path(), {{builtDispatcherPath(), dispatcherFileName()}});
    const std::string log = joinPath(root.path(), "records.log");
    ScopedEnvironment output("VORN_LOG_OUTPUT", log.c_str());
    ScopedEnvironment levels("VORN_LOG_LEVELS", "*=off,guard.library=info");
    ScopedEnvironment config("VORN_LOG_CONFIG", nullptr);
    vorn::tools::logging::InstallationRoot::resetCache();
    ASSERT_STREQ(vorn::tools::logging::InstallationRoot::findFromModulePath(
                     joinPath(joinPath(root.path(), moduleDirectoryName()), "x").c_str()),
                 root.path().c_str());

    VornParametersQt4Init();
    EXPECT_TRUE(vorn::tools::logging::Logging::get()->attached());
    VornParametersQt4Deinit();
    vorn::tools::logging::InstallationRoot::resetCache();

    const std::string thread = std::to_string(vorn::templates::platform::native::currentThreadId());
    const std::vector<std::string> lines = readLines(log);
    ASSERT_EQ(lines.size(), 2u);
    const std::string init =
        " INFO  guard.library - thread-id=" + thread + "|LIBRARY INIT: VornParametersQt4 (useCount: 1)";
    const std::string deinit =
        " INFO  guard.library - thread-id=" + thread + "|LIBRARY DEINIT: VornParametersQt4 (useCount: 1)";
    EXPECT_NE(lines[0].find(init), std::string::npos) << lines[0];
    EXPECT_NE(lines[1].find(deinit), std::string::npos) << lines[1];
    EXPECT_EQ(lines[0].size(), lines[0].find(init) + init.size()) << "the text ends the line";
}

TEST_F(LifecycleTest, withoutADispatcherTheLifecycleLoggerIsTheDisabledDefaultOne)
{
    VornParametersQt4Init();
    vorn::tools::logging::Logging* logging = vorn::tools::logging::Logging::get();
    EXPECT_FALSE(logging->attached());
    vorn::tools::logging::Logger& logger = logging->getLogger("guard.library");
    EXPECT_EQ(&logger, &logging->defaultLogger());
    EXPECT_EQ(logger.threshold(), 7u);
    EXPECT_FALSE(logger.isEnabledFor(2));
    VornParametersQt4Deinit();
}
