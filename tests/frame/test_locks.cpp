#include <vorn/platform/ReadWriteLock.h>
#include <vorn/platform/ReadWriteLockGuard.h>
#include <vorn/platform/RecursiveMutex.h>
#include <vorn/platform/RecursiveMutexGuard.h>
#include <vorn/platform/SpinLockVariableGuard.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <mutex>
#include <thread>
#include <vector>

using namespace vorn::templates::platform;

namespace {

// Long enough for a thread that is not blocked to get through; a blocked one shows as not done.
const std::chrono::milliseconds kSettle(100);

template <class Predicate> bool waitFor(Predicate done)
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!done()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

} // namespace

TEST(RecursiveMutexTest, theOwnerMayLockAgainAndOthersWaitForTheLastUnlock)
{
    RecursiveMutex mutex;
    mutex.lock();
    mutex.lock();
    EXPECT_EQ(mutex.lockCount(), 2);

    std::atomic<bool> acquired{false};
    std::thread other([&] {
        mutex.lock();
        acquired = true;
        mutex.unlock();
    });
    std::this_thread::sleep_for(kSettle);
    EXPECT_FALSE(acquired);
    mutex.unlock();
    std::this_thread::sleep_for(kSettle);
    EXPECT_FALSE(acquired) << "one unlock of two leaves the mutex held";
    mutex.unlock();
    other.join();
    EXPECT_TRUE(acquired);
    EXPECT_EQ(mutex.lockCount(), 0);
}

TEST(RecursiveMutexGuardTest, locksForItsScopeAndNests)
{
    RecursiveMutex mutex;
    {
        RecursiveMutexGuard outer(&mutex);
        EXPECT_TRUE(outer.locked());
        {
            RecursiveMutexGuard inner(&mutex);
            EXPECT_EQ(mutex.lockCount(), 2);
        }
        EXPECT_EQ(mutex.lockCount(), 1);
    }
    EXPECT_EQ(mutex.lockCount(), 0);
    std::thread other([&] { RecursiveMutexGuard guard(&mutex); });
    other.join();
}

TEST(RecursiveMutexGuardTest, releasesWhenAnExceptionLeavesTheScope)
{
    RecursiveMutex mutex;
    try {
        RecursiveMutexGuard guard(&mutex);
        throw 1;
    } catch (int) {
    }
    EXPECT_EQ(mutex.lockCount(), 0);
    std::thread other([&] { RecursiveMutexGuard guard(&mutex); });
    other.join();
}

TEST(ReadWriteLockTest, twoReadLocksAreHeldAtOnce)
{
    ReadWriteLock lock;
    lock.lockRead();
    std::atomic<bool> secondReader{false};
    std::thread reader([&] {
        lock.lockRead();
        secondReader = true;
        EXPECT_EQ(lock.readers(), 2u);
        lock.unlock();
    });
    reader.join();
    EXPECT_TRUE(secondReader);
    EXPECT_EQ(lock.readers(), 1u);
    lock.unlock();
    EXPECT_EQ(lock.readers(), 0u);
}

TEST(ReadWriteLockTest, aWaitingWriterBlocksNewReadersUntilItHasHadItsTurn)
{
    ReadWriteLock lock;
    std::mutex orderMutex;
    std::vector<std::string> order;
    auto record = [&](const char* what) {
        std::lock_guard<std::mutex> guard(orderMutex);
        order.push_back(what);
    };

    // Two readers hold the lock.
    lock.lockRead();
    lock.lockRead();

    std::thread writer([&] {
        lock.lockWrite();
        record("writer");
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        lock.unlock();
    });
    ASSERT_TRUE(waitFor([&] { return lock.waitingWriters() == 1u; }));

    std::atomic<bool> lateReaderIn{false};
    std::thread lateReader([&] {
        lock.lockRead();
        lateReaderIn = true;
        record("reader");
        lock.unlock();
    });
    std::this_thread::sleep_for(kSettle);
    EXPECT_FALSE(lateReaderIn) << "a reader arriving after a waiting writer must wait";
    EXPECT_EQ(lock.readers(), 2u);

    lock.unlock();
    lock.unlock();
    writer.join();
    lateReader.join();
    EXPECT_EQ(order, (std::vector<std::string>{"writer", "reader"}));
    EXPECT_EQ(lock.readers(), 0u);
    EXPECT_FALSE(lock.writerActive());
}

TEST(ReadWriteLockTest, aWriterExcludesReadersAndOtherWriters)
{
    ReadWriteLock lock;
    lock.lockWrite();
    EXPECT_TRUE(lock.writerActive());
    std::atomic<int> entered{0};
    std::thread reader([&] {
        lock.lockRead();
        ++entered;
        lock.unlock();
    });
    std::thread writer([&] {
        lock.lockWrite();
        ++entered;
        lock.unlock();
    });
    std::this_thread::sleep_for(kSettle);
    EXPECT_EQ(entered, 0);
    lock.unlock();
    reader.join();
    writer.join();
    EXPECT_EQ(entered, 2);
}

TEST(ReadWriteLockGuardTest, takesTheModeItIsGiven)
{
    ReadWriteLock lock;
    {
        ReadWriteLockGuard reading(&lock, ReadWriteLockGuard::Read);
        EXPECT_EQ(reading.mode(), ReadWriteLockGuard::Read);
        EXPECT_EQ(static_cast<int>(ReadWriteLockGuard::Read), 1);
        EXPECT_EQ(lock.readers(), 1u);
    }
    EXPECT_EQ(lock.readers(), 0u);
    {
        ReadWriteLockGuard writing(&lock, ReadWriteLockGuard::Write);
        EXPECT_EQ(static_cast<int>(writing.mode()), 2);
        EXPECT_TRUE(lock.writerActive());
    }
    EXPECT_FALSE(lock.writerActive());
}

TEST(SpinLockVariableGuardTest, theOwnerMayTakeItAgainAndOnlyTheOutermostGuardReleases)
{
    volatile LockWord word = 0;
    volatile ThreadId owner = 0;
    {
        SpinLockVariableGuard outer(&word, &owner);
        EXPECT_TRUE(outer.tookLock());
        EXPECT_EQ(word, 1);
        EXPECT_EQ(owner, native::currentThreadId());
        {
            SpinLockVariableGuard inner(&word, &owner);
            EXPECT_FALSE(inner.tookLock());
            {
                SpinLockVariableGuard innermost(&word, &owner);
                EXPECT_FALSE(innermost.tookLock());
            }
        }
        EXPECT_EQ(word, 1) << "an inner guard released the lock";
        EXPECT_EQ(owner, native::currentThreadId());
    }
    EXPECT_EQ(word, 0);
    EXPECT_EQ(owner, 0u);
}

TEST(SpinLockVariableGuardTest, anotherThreadSpinsUntilTheOwnerReleases)
{
    volatile LockWord word = 0;
    volatile ThreadId owner = 0;
    std::atomic<bool> acquired{false};
    std::atomic<ThreadId> otherId{0};
    std::thread other;
    {
        SpinLockVariableGuard guard(&word, &owner);
        other = std::thread([&] {
            SpinLockVariableGuard theirs(&word, &owner);
            otherId = native::loadThreadId(&owner);
            acquired = theirs.tookLock();
        });
        std::this_thread::sleep_for(kSettle);
        EXPECT_FALSE(acquired);
    }
    other.join();
    EXPECT_TRUE(acquired);
    EXPECT_NE(otherId.load(), 0u);
    EXPECT_NE(otherId.load(), native::currentThreadId());
    EXPECT_EQ(word, 0);
}

TEST(SpinLockVariableGuardTest, withoutAnOwnerItIsAPlainLock)
{
    volatile LockWord word = 0;
    std::atomic<bool> acquired{false};
    std::thread other;
    {
        SpinLockVariableGuard guard(&word);
        EXPECT_TRUE(guard.tookLock());
        EXPECT_EQ(word, 1);
        other = std::thread([&] {
            SpinLockVariableGuard theirs(&word);
            acquired = true;
        });
        std::this_thread::sleep_for(kSettle);
        EXPECT_FALSE(acquired);
    }
    other.join();
    EXPECT_TRUE(acquired);
    EXPECT_EQ(word, 0);
}

TEST(SpinLockVariableGuardTest, keepsACounterConsistentUnderContention)
{
    volatile LockWord word = 0;
    volatile ThreadId owner = 0;
    long counter = 0;
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&] {
            for (int i = 0; i < 2000; ++i) {
                SpinLockVariableGuard guard(&word, &owner);
                SpinLockVariableGuard again(&word, &owner);
                ++counter;
            }
        });
    }
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(counter, 8000);
}
