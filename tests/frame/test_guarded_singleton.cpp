#include "support/VirtualSlots.h"
#include <vorn/lib/VornParametersQt4.h>
#include <vorn/lib/private/LibraryInitController.h>
#include <vorn/lib/private/Logging.h>
#include <vorn/platform/GuardedSingleton.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

using vorn::test::virtualSlot;

namespace {

std::vector<std::string> g_events;

class First : public GuardedSingleton<First>
{
public:
    static int initialisations;
    static int destructions;

    void tearDown() override { g_events.push_back("first tearDown"); }
    void initialise() override
    {
        ++initialisations;
        g_events.push_back("first initialise");
    }

private:
    friend class GuardedSingleton<First>;
    First() { g_events.push_back("first created"); }
    ~First() override
    {
        ++destructions;
        // The instance pointer is nulled only after the object is gone.
        g_events.push_back(exists() ? "first destroyed, pointer still set" : "first destroyed, pointer null");
    }
};
int First::initialisations = 0;
int First::destructions = 0;

class Second : public GuardedSingleton<Second>
{
public:
    void tearDown() override { g_events.push_back("second tearDown"); }

private:
    friend class GuardedSingleton<Second>;
    Second() = default;
    ~Second() override { g_events.push_back("second destroyed"); }
};

class Plain : public GuardedSingleton<Plain>
{
    friend class GuardedSingleton<Plain>;
    Plain() = default;
};

} // namespace

TEST(GuardedSingletonBaseTest, virtualOperationsKeepTheirSlotOrder)
{
    // Itanium layout: tearDown, instancePointerAddress, the two destructor entries, initialise.
    EXPECT_EQ(virtualSlot(&GuardedSingletonBase::tearDown), 0);
    EXPECT_EQ(virtualSlot(&GuardedSingletonBase::instancePointerAddress), 1);
    EXPECT_EQ(virtualSlot(&GuardedSingletonBase::initialise), 4);
}

TEST(GuardedSingletonTest, instanceCreatesOnceRunsTheInitialisationHookAndPointsAtItself)
{
    VornParametersQt4Init();
    g_events.clear();
    First* first = First::instance();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(First::instance(), first);
    EXPECT_EQ(g_events, (std::vector<std::string>{"first created", "first initialise"}));
    EXPECT_EQ(*static_cast<GuardedSingletonBase*>(first)->instancePointerAddress(),
              static_cast<GuardedSingletonBase*>(first));
    VornParametersQt4Deinit();
}

TEST(GuardedSingletonTest, lastDeinitDestroysTheMostRecentFirstAndNullsItsPointer)
{
    VornParametersQt4Init();
    First::instance();
    Second::instance();
    g_events.clear();
    VornParametersQt4Deinit();
    EXPECT_EQ(g_events, (std::vector<std::string>{"second tearDown", "second destroyed", "first tearDown",
                                                  "first destroyed, pointer still set"}));
    EXPECT_FALSE(First::exists());
    EXPECT_FALSE(Second::exists());
}

TEST(GuardedSingletonTest, theNextUseAfterTheLastDeinitCreatesAFreshOneAndInitialisesItAgain)
{
    VornParametersQt4Init();
    First::instance();
    const int initialisations = First::initialisations;
    const int destructions = First::destructions;
    VornParametersQt4Deinit();
    EXPECT_EQ(First::destructions, destructions + 1);
    EXPECT_FALSE(First::exists());

    VornParametersQt4Init();
    g_events.clear();
    EXPECT_NE(First::instance(), nullptr);
    EXPECT_EQ(First::initialisations, initialisations + 1);
    EXPECT_EQ(g_events, (std::vector<std::string>{"first created", "first initialise"}));
    VornParametersQt4Deinit();
    EXPECT_FALSE(First::exists());
}

TEST(GuardedSingletonTest, aSingletonLivesOnWhileAnyInitIsOutstanding)
{
    VornParametersQt4Init();
    VornParametersQt4Init();
    Plain* plain = Plain::instance();
    VornParametersQt4Deinit();
    EXPECT_TRUE(Plain::exists());
    EXPECT_EQ(Plain::instance(), plain);
    VornParametersQt4Deinit();
    EXPECT_FALSE(Plain::exists());
}

TEST(GuardedSingletonTest, theLoggingFacilityIsOneOfTheRegisteredSingletons)
{
    VornParametersQt4Init();
    EXPECT_TRUE(vorn::tools::logging::Logging::alive()) << "the init's log line creates it";
    VornParametersQt4Deinit();
    EXPECT_FALSE(vorn::tools::logging::Logging::alive());
}
