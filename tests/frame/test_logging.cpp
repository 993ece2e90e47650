#include "FrameTestSupport.h"

#include <vorn/base/LogLevel.h>
#include <vorn/lib/VornParametersQt4.h>
#include <vorn/lib/private/Logging.h>

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>

using namespace vorn::test;
using vorn::tools::logging::Logger;
using vorn::tools::logging::Logging;

namespace {

// Every test runs between an init and a deinit, so that the logging facility it creates is torn down
// (and its dispatcher unloaded) at the end.
class LoggingTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        VornParametersQt4Init();
        m_logging = Logging::get();
        ASSERT_FALSE(m_logging->attached()) << "the build tree has no dispatcher under its root";
    }
    void TearDown() override { VornParametersQt4Deinit(); }

    // Installs the dispatcher under a temporary root and attaches it, writing to records.log there.
    void attachDispatcher(const char* levels)
    {
        installModules(m_root.path(), {{builtDispatcherPath(), dispatcherFileName()}});
        m_log = joinPath(m_root.path(), "records.log");
        ScopedEnvironment output("VORN_LOG_OUTPUT", m_log.c_str());
        ScopedEnvironment configuredLevels("VORN_LOG_LEVELS", levels);
        ScopedEnvironment config("VORN_LOG_CONFIG", nullptr);
        ASSERT_NE(m_logging->loadDispatcher(Logging::kDispatcherModuleName, m_root.path().c_str()), nullptr)
            << m_logging->lastLoadError();
        ASSERT_TRUE(m_logging->attached());
    }

    std::string dispatcherPath() const
    {
        return joinPath(joinPath(m_root.path(), moduleDirectoryName()), dispatcherFileName());
    }

    Logging* m_logging = nullptr;
    TemporaryDirectory m_root;
    std::string m_log;
};

} // namespace

TEST_F(LoggingTest, withoutADispatcherEveryLoggerIsTheDefaultOneAndDisabledBelowSeven)
{
    Logger& library = m_logging->getLogger("guard.library");
    Logger& other = m_logging->getLogger("anything.else");
    EXPECT_EQ(&library, &m_logging->defaultLogger());
    EXPECT_EQ(&other, &library);
    EXPECT_EQ(library.identity(), 0u);
    EXPECT_EQ(library.threshold(), 7u);
    for (std::uint32_t level = 0; level < 7; ++level)
        EXPECT_FALSE(library.isEnabledFor(level)) << level;
    // Dropped quietly.
    library.log(7, "nowhere", nullptr, 0);
}

TEST_F(LoggingTest, aMissingDispatcherModuleLeavesTheFacilityDetachedWithTheLoadError)
{
    EXPECT_EQ(m_logging->loadDispatcher(Logging::kDispatcherModuleName, m_root.path().c_str()), nullptr);
    EXPECT_FALSE(m_logging->attached());
    EXPECT_EQ(m_logging->dispatcherPath(), dispatcherPath());
    EXPECT_FALSE(m_logging->lastLoadError().empty());
}

TEST_F(LoggingTest, aModuleWithoutTheDescriptorIsUnloadedAgainAndLoggingStaysSilent)
{
    installModules(m_root.path(), {{builtNoDescriptorModulePath(), dispatcherFileName()}});
    EXPECT_EQ(m_logging->loadDispatcher(Logging::kDispatcherModuleName, m_root.path().c_str()), nullptr);
    EXPECT_TRUE(m_logging->lastLoadError().empty()) << "the module itself loaded";
    EXPECT_FALSE(m_logging->attached());
    EXPECT_FALSE(isModuleLoaded(dispatcherPath()));
    EXPECT_EQ(&m_logging->getLogger("guard.library"), &m_logging->defaultLogger());
    EXPECT_FALSE(m_logging->getLogger("guard.library").isEnabledFor(2));
}

TEST_F(LoggingTest, anAttachedDispatcherHandsOutLoggersWithItsIdentitiesAndLevels)
{
    attachDispatcher("*=warning,guard.library=info");
    EXPECT_TRUE(isModuleLoaded(dispatcherPath()));
    Logger& library = m_logging->getLogger("guard.library");
    EXPECT_NE(&library, &m_logging->defaultLogger());
    EXPECT_NE(library.identity(), 0u);
    EXPECT_EQ(library.threshold(), 2u);
    EXPECT_TRUE(library.isEnabledFor(2));
    EXPECT_FALSE(library.isEnabledFor(1));
    EXPECT_EQ(&m_logging->getLogger("guard.library"), &library) << "one logger per identity";

    Logger& other = m_logging->getLogger("guard.other");
    EXPECT_NE(other.identity(), library.identity());
    EXPECT_EQ(other.threshold(), 4u);
    EXPECT_FALSE(other.isEnabledFor(2));
}

TEST_F(LoggingTest, recordsGoThroughTheDispatcherWithTheirLoggerLevelAndSource)
{
    attachDispatcher("guard.library=info");
    Logger& library = m_logging->getLogger("guard.library");
    library.log(2, "first record", nullptr, 0);
    library.log(5, "second record", "Source.cpp", 42);
    const std::vector<std::string> lines = readLines(m_log);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_NE(lines[0].find(" INFO  guard.library - first record"), std::string::npos) << lines[0];
    EXPECT_NE(lines[1].find(" ERROR guard.library - second record (Source.cpp:42)"), std::string::npos)
        << lines[1];
}

TEST_F(LoggingTest, aLevelChangeFromTheDispatcherReachesTheLogger)
{
    attachDispatcher("guard.library=info");
    Logger& library = m_logging->getLogger("guard.library");
    ASSERT_TRUE(library.isEnabledFor(2));
    m_logging->descriptor()->set_level("guard.library", vorn::tools::logging::LogWarning);
    EXPECT_EQ(library.threshold(), 4u);
    EXPECT_FALSE(library.isEnabledFor(2));
    EXPECT_TRUE(library.isEnabledFor(4));
    m_logging->descriptor()->set_level("guard.library", vorn::tools::logging::LogTrace);
    EXPECT_TRUE(library.isEnabledFor(0));
}

TEST_F(LoggingTest, aMutedThreadSeesTheLoggerDisabledWhileOtherThreadsDoNot)
{
    attachDispatcher("guard.library=info");
    Logger& library = m_logging->getLogger("guard.library");
    library.muteCurrentThread();
    library.muteCurrentThread();
    EXPECT_FALSE(library.isEnabledFor(2));
    std::atomic<bool> enabledElsewhere{false};
    std::thread other([&] { enabledElsewhere = library.isEnabledFor(2); });
    other.join();
    EXPECT_TRUE(enabledElsewhere);
    library.unmuteCurrentThread();
    EXPECT_FALSE(library.isEnabledFor(2)) << "mutes nest";
    library.unmuteCurrentThread();
    EXPECT_TRUE(library.isEnabledFor(2));
}

TEST_F(LoggingTest, aDetachedDispatcherLeavesTheFacilitySilent)
{
    attachDispatcher("guard.library=info");
    m_logging->getLogger("guard.library").log(2, "before", nullptr, 0);
    m_logging->descriptor()->detach_clients();
    EXPECT_FALSE(m_logging->attached());
    Logger& logger = m_logging->getLogger("guard.library");
    EXPECT_EQ(&logger, &m_logging->defaultLogger());
    EXPECT_FALSE(logger.isEnabledFor(2));
    logger.log(7, "after", nullptr, 0);
    const std::vector<std::string> lines = readLines(m_log);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_NE(lines[0].find("before"), std::string::npos);
}

TEST_F(LoggingTest, theLastDeinitUnloadsTheDispatcherAndTheNextInitStartsAfresh)
{
    attachDispatcher("guard.library=info");
    ASSERT_TRUE(isModuleLoaded(dispatcherPath()));
    VornParametersQt4Deinit();
    EXPECT_FALSE(Logging::alive());
    EXPECT_FALSE(isModuleLoaded(dispatcherPath()));
    VornParametersQt4Init();
    m_logging = Logging::get();
    EXPECT_FALSE(m_logging->attached());
}
