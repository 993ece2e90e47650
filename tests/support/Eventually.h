#pragma once

// Waiting for something the event loop brings about, in a GoogleTest program. QTest's QTRY_*
// macros report a failure to QTest, which is not running here: a condition that never holds would
// end the test quietly, as if it had passed. These wait the same way and fail the test instead.

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QTest>

namespace vorn {
namespace test {

// Runs the event loop until condition holds or timeoutMs have passed; whether it held.
template <typename Condition> bool eventually(Condition condition, int timeoutMs)
{
    QElapsedTimer waited;
    waited.start();
    while (!condition()) {
        if (waited.elapsed() > timeoutMs)
            return condition();
        QTest::qWait(10);
    }
    return true;
}

} // namespace test
} // namespace vorn

// Ends the test with a failure when condition does not hold within timeoutMs.
#define VORN_WAIT_UNTIL(condition, timeoutMs)                                                                \
    ASSERT_TRUE(::vorn::test::eventually([&] { return static_cast<bool>(condition); }, timeoutMs))           \
        << "waited " << (timeoutMs) << " ms for " #condition

// Ends the test with a failure, showing both values, when actual does not equal expected within
// timeoutMs.
#define VORN_WAIT_EQ(actual, expected, timeoutMs)                                                            \
    do {                                                                                                     \
        ::vorn::test::eventually([&] { return (actual) == (expected); }, timeoutMs);                         \
        ASSERT_EQ(actual, expected) << "after waiting " << (timeoutMs) << " ms";                             \
    } while (false)
