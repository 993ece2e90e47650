#include "family/dispatcher/CommonLoggingDispatcher.h"
#include "family/dispatcher/DispatcherConfiguration.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>

using namespace vorn::dispatcher;

TEST(DispatcherConfigurationTest, levelsParseByNameOrNumber)
{
    std::uint32_t level = 99;
    EXPECT_TRUE(parseLevel("info", &level));
    EXPECT_EQ(level, 2u);
    EXPECT_TRUE(parseLevel(" WARNING ", &level));
    EXPECT_EQ(level, 4u);
    EXPECT_TRUE(parseLevel("warn", &level));
    EXPECT_EQ(level, 4u);
    EXPECT_TRUE(parseLevel("7", &level));
    EXPECT_EQ(level, 7u);
    EXPECT_TRUE(parseLevel("off", &level));
    EXPECT_EQ(level, 7u);
    EXPECT_FALSE(parseLevel("8", &level));
    EXPECT_FALSE(parseLevel("loud", &level));
    EXPECT_STREQ(levelName(2), "INFO ");
}

TEST(DispatcherConfigurationTest, withoutConfigurationEveryLoggerWritesInfoToStandardError)
{
    DispatcherConfiguration configuration;
    EXPECT_EQ(configuration.levelFor("guard.library"), 2u);
    EXPECT_EQ(configuration.output(), "stderr");
}

TEST(DispatcherConfigurationTest, aLoggerTakesItsOwnEntryElseTheLongestDottedPrefixElseTheDefault)
{
    DispatcherConfiguration configuration;
    configuration.applyLevels("*=error, guard=warning, guard.library=debug, broken, =3, x=loud");
    EXPECT_EQ(configuration.levelFor("guard.library"), 1u);
    EXPECT_EQ(configuration.levelFor("guard.library.detail"), 1u);
    EXPECT_EQ(configuration.levelFor("guard.other"), 4u);
    EXPECT_EQ(configuration.levelFor("guardian"), 5u);
    EXPECT_EQ(configuration.levelFor("x"), 5u) << "an entry that does not parse is skipped";
}

TEST(DispatcherConfigurationTest, aFileSetsLevelsAndOutput)
{
    const std::string path = ::testing::TempDir() + "vorn-dispatcher-test.conf";
    {
        std::ofstream out(path);
        out << "# levels of the product\n"
               "levels = *=off, guard.library=info   # the lifecycle only\n"
               "\n"
               "output = /var/log/vorn.log\n"
               "unknown = ignored\n";
    }
    DispatcherConfiguration configuration;
    EXPECT_TRUE(configuration.applyFile(path));
    EXPECT_EQ(configuration.levelFor("guard.library"), 2u);
    EXPECT_EQ(configuration.levelFor("other"), 7u);
    EXPECT_EQ(configuration.output(), "/var/log/vorn.log");
    std::remove(path.c_str());
    EXPECT_FALSE(configuration.applyFile(path));
}
