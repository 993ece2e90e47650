// A deinit without an init, in a program of its own: the logging facility it creates is not taken into
// any teardown and lives until the process ends.
#include <vorn/host/VornCore.h>
#include <vorn/host/VornModelQt4.h>
#include <vorn/host/VornParameters.h>
#include <vorn/lib/VornParametersQt4.h>
#include <vorn/lib/private/LibraryInitController.h>
#include <vorn/lib/private/Logging.h>

#include <gtest/gtest.h>

TEST(UseCountWrapTest, aDeinitAtZeroWrapsTheCountAndDestroysNothingAndTheNextInitRemembersNothing)
{
    ASSERT_EQ(LibraryInitController::useCount(), 0u);
    const unsigned long long coreInits = VornCoreInitCalls();
    const unsigned long long coreDeinits = VornCoreDeinitCalls();
    const unsigned long long parametersDeinits = VornParametersDeinitCalls();
    const unsigned long long modelDeinits = VornModelQt4DeinitCalls();

    VornParametersQt4Deinit();
    EXPECT_EQ(LibraryInitController::useCount(), 4294967295u);
    EXPECT_FALSE(LibraryInitController::hasInstance());
    EXPECT_EQ(VornCoreDeinitCalls(), coreDeinits);
    EXPECT_EQ(VornParametersDeinitCalls(), parametersDeinits);
    EXPECT_EQ(VornModelQt4DeinitCalls(), modelDeinits);
    EXPECT_TRUE(vorn::tools::logging::Logging::alive()) << "nothing tore the logging facility down";

    // Back to 0 without an instance: the dependencies are initialised, their deinits not remembered.
    VornParametersQt4Init();
    EXPECT_EQ(LibraryInitController::useCount(), 0u);
    EXPECT_FALSE(LibraryInitController::hasInstance());
    EXPECT_EQ(VornCoreInitCalls(), coreInits + 1);

    // A balanced pair afterwards deinitialises only what its own init initialised.
    VornParametersQt4Init();
    EXPECT_TRUE(LibraryInitController::hasInstance());
    VornParametersQt4Deinit();
    EXPECT_EQ(LibraryInitController::useCount(), 0u);
    EXPECT_FALSE(LibraryInitController::hasInstance());
    EXPECT_EQ(VornCoreInitCalls(), coreInits + 2);
    EXPECT_EQ(VornCoreDeinitCalls(), coreDeinits + 1);
    EXPECT_EQ(VornParametersDeinitCalls(), parametersDeinits + 1);
    EXPECT_EQ(VornModelQt4DeinitCalls(), modelDeinits + 1);
    EXPECT_TRUE(vorn::tools::logging::Logging::alive())
        << "created outside any instance, it is never registered";
}
