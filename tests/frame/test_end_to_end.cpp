// A host process loads an installed copy of the library at run time and calls one init and one deinit;
// the lifecycle lines reach the dispatcher installed under the root the library finds, or nothing is
// written when no dispatcher is installed.
#include "FrameTestSupport.h"

#include <vorn/lib/private/InstallationRoot.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace vorn::test;

namespace {

class EndToEndTest : public ::testing::Test
{
protected:
    // Runs the host on the library at libraryPath with the given environment; returns its thread id.
    std::string runHost(const std::string& libraryPath, std::vector<std::string> environment)
    {
        const std::string threadFile = joinPath(m_work.path(), "thread-id.txt");
        std::vector<std::string> arguments{libraryPath, threadFile};
        // Nothing of the test's own environment leaks into what the library and dispatcher see.
        arguments.push_back("VORNDIR5_64=");
        arguments.push_back("VORNDIR5=");
        arguments.push_back("VORN_LOG_CONFIG=");
        arguments.push_back("VORN_LOG_LEVELS=");
        arguments.push_back("VORN_LOG_OUTPUT=");
        arguments.insert(arguments.end(), environment.begin(), environment.end());
        EXPECT_EQ(runProcess(builtHostPath(), arguments), 0);
        const std::vector<std::string> lines = readLines(threadFile);
        return lines.empty() ? std::string() : lines[0];
    }

    std::string log() const { return joinPath(m_work.path(), "records.log"); }

    void expectLifecycleLines(const std::string& thread)
    {
        ASSERT_FALSE(thread.empty());
        const std::vector<std::string> lines = readLines(log());
        ASSERT_EQ(lines.size(), 2u);
        const std::string init =
            "guard.library - thread-id=" + thread + "|LIBRARY INIT: VornParametersQt4 (useCount: 1)";
        const std::string deinit =
            "guard.library - thread-id=" + thread + "|LIBRARY DEINIT: VornParametersQt4 (useCount: 1)";
        ASSERT_GE(lines[0].size(), init.size());
        ASSERT_GE(lines[1].size(), deinit.size());
        EXPECT_EQ(lines[0].substr(lines[0].size() - init.size()), init) << lines[0];
        EXPECT_EQ(lines[1].substr(lines[1].size() - deinit.size()), deinit) << lines[1];
        EXPECT_NE(lines[0].find(" INFO  "), std::string::npos) << "written at level 2";
    }

    TemporaryDirectory m_work;
};

} // namespace

TEST_F(EndToEndTest, aDispatcherBesideTheLibraryUnderTheModulePathRootGetsBothLifecycleLines)
{
    const std::string root = joinPath(m_work.path(), "root");
    const std::string modules = installModules(
        root, {{builtLibraryPath(), VORN_TEST_LIBRARY_FILE}, {builtDispatcherPath(), dispatcherFileName()}});
    const std::string thread =
        runHost(joinPath(modules, VORN_TEST_LIBRARY_FILE),
                {"VORN_LOG_OUTPUT=" + log(), "VORN_LOG_LEVELS=*=off,guard.library=info"});
    expectLifecycleLines(thread);
}

TEST_F(EndToEndTest, aLibraryOutsideAnInstallDirectoryFindsTheDispatcherThroughVorndir5_64)
{
    const std::string root = joinPath(m_work.path(), "root");
    installModules(root, {{builtDispatcherPath(), dispatcherFileName()}});
    const std::string elsewhere = joinPath(joinPath(m_work.path(), "elsewhere"), "app");
    makeDirectories(elsewhere);
    const std::string library = joinPath(elsewhere, VORN_TEST_LIBRARY_FILE);
    copyFile(builtLibraryPath(), library);
    std::string unused;
    if (vorn::tools::logging::InstallationRoot::rootFromModulePath(library.c_str(), &unused))
        GTEST_SKIP() << "the temporary directory lies under an install directory: " << library;

    const std::string thread =
        runHost(library, {"VORNDIR5_64=" + root + pathSeparator() + pathSeparator(),
                          "VORNDIR5=" + joinPath(m_work.path(), "wrong"), "VORN_LOG_OUTPUT=" + log(),
                          "VORN_LOG_LEVELS=guard.library=info"});
    expectLifecycleLines(thread);
}

TEST_F(EndToEndTest, theDispatcherReadsItsConfigurationFileUnderTheRoot)
{
    const std::string root = joinPath(m_work.path(), "root");
    const std::string modules = installModules(
        root, {{builtLibraryPath(), VORN_TEST_LIBRARY_FILE}, {builtDispatcherPath(), dispatcherFileName()}});
    makeDirectories(joinPath(root, "etc"));
    writeFile(joinPath(joinPath(root, "etc"), "common-logging-dispatcher.conf"),
              "levels = *=off, guard=info\noutput = " + log() + "\n");
    expectLifecycleLines(runHost(joinPath(modules, VORN_TEST_LIBRARY_FILE), {}));
}

TEST_F(EndToEndTest, aLoggerConfiguredAboveLevelTwoWritesNothing)
{
    const std::string root = joinPath(m_work.path(), "root");
    const std::string modules = installModules(
        root, {{builtLibraryPath(), VORN_TEST_LIBRARY_FILE}, {builtDispatcherPath(), dispatcherFileName()}});
    const std::string thread = runHost(joinPath(modules, VORN_TEST_LIBRARY_FILE),
                                       {"VORN_LOG_OUTPUT=" + log(), "VORN_LOG_LEVELS=guard.library=warning"});
    EXPECT_FALSE(thread.empty());
    EXPECT_TRUE(readLines(log()).empty());
}

TEST_F(EndToEndTest, withoutADispatcherNothingIsWritten)
{
    const std::string root = joinPath(m_work.path(), "root");
    const std::string modules = installModules(root, {{builtLibraryPath(), VORN_TEST_LIBRARY_FILE}});
    const std::string thread = runHost(joinPath(modules, VORN_TEST_LIBRARY_FILE),
                                       {"VORN_LOG_OUTPUT=" + log(), "VORN_LOG_LEVELS=*=trace"});
    EXPECT_FALSE(thread.empty()) << "the host ran through";
    EXPECT_FALSE(fileExists(log()));
}
