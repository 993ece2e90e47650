// Many threads entering and leaving the library at once. The number of init/deinit pairs per thread
// comes from VORN_STRESS_PAIRS when set (sanitizer and emulator runs keep it small).
#include <vorn/host/VornCore.h>
#include <vorn/host/VornModelQt4.h>
#include <vorn/host/VornParameters.h>
#include <vorn/lib/VornParametersQt4.h>
#include <vorn/lib/private/LibraryInitController.h>
#include <vorn/lib/private/Logging.h>
#include <vorn/platform/GuardedSingleton.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <thread>
#include <vector>

namespace {

std::atomic<long> g_alive{0};
std::atomic<long> g_created{0};
std::atomic<long> g_destroyed{0};

// A singleton that the threads use between their init and deinit.
class Counter : public GuardedSingleton<Counter>
{
public:
    void touch() { m_touches.fetch_add(1); }

private:
    friend class GuardedSingleton<Counter>;
    Counter()
    {
        ++g_alive;
        ++g_created;
    }
    ~Counter() override
    {
        --g_alive;
        ++g_destroyed;
    }
    std::atomic<long> m_touches{0};
};

int pairsPerThread()
{
    if (const char* text = std::getenv("VORN_STRESS_PAIRS")) {
        const int pairs = std::atoi(text);
        if (pairs > 0)
            return pairs;
    }
#if defined(_WIN32)
    return 300;
#else
    return 2000;
#endif
}

} // namespace

TEST(LifecycleStressTest, eightThreadsOfInitDeinitPairsEndBalancedWithNothingLeft)
{
    const int pairs = pairsPerThread();
    const int threads = 8;
    const unsigned long long coreInits = VornCoreInitCalls(), coreDeinits = VornCoreDeinitCalls();
    const unsigned long long parametersInits = VornParametersInitCalls(),
                             parametersDeinits = VornParametersDeinitCalls();
    const unsigned long long modelInits = VornModelQt4InitCalls(), modelDeinits = VornModelQt4DeinitCalls();

    std::atomic<bool> start{false};
    std::atomic<long> countSeenBelowOne{0};
    std::vector<std::thread> workers;
    for (int t = 0; t < threads; ++t) {
        workers.emplace_back([&] {
            while (!start.load())
                std::this_thread::yield();
            for (int i = 0; i < pairs; ++i) {
                VornParametersQt4Init();
                // This thread's init keeps the library up until its deinit.
                if (LibraryInitController::useCount() < 1)
                    ++countSeenBelowOne;
                Counter::instance()->touch();
                vorn::tools::logging::Logging::get()->getLogger("guard.library");
                VornParametersQt4Deinit();
            }
        });
    }
    start = true;
    for (auto& worker : workers)
        worker.join();

    const unsigned long long total = static_cast<unsigned long long>(pairs) * threads;
    EXPECT_EQ(LibraryInitController::useCount(), 0u);
    EXPECT_FALSE(LibraryInitController::hasInstance());
    EXPECT_EQ(countSeenBelowOne.load(), 0);
    EXPECT_EQ(VornCoreInitCalls() - coreInits, total);
    EXPECT_EQ(VornCoreDeinitCalls() - coreDeinits, total);
    EXPECT_EQ(VornParametersInitCalls() - parametersInits, total);
    EXPECT_EQ(VornParametersDeinitCalls() - parametersDeinits, total);
    EXPECT_EQ(VornModelQt4InitCalls() - modelInits, total);
    EXPECT_EQ(VornModelQt4DeinitCalls() - modelDeinits, total);
    EXPECT_EQ(g_alive.load(), 0);
    EXPECT_EQ(g_created.load(), g_destroyed.load());
    EXPECT_GE(g_created.load(), 1);
    EXPECT_FALSE(Counter::exists());
    EXPECT_FALSE(vorn::tools::logging::Logging::alive());
}
