// The lock primitives on POSIX systems, built to behave like their Windows counterparts: the mutex and
// the critical section are recursive, the event is a flag with a condition variable that stays set until
// it is reset, and the interlocked calls are sequentially consistent atomic operations.
#include <vorn/platform/NativeSync.h>

#include <condition_variable>
#include <mutex>

#include <sys/syscall.h>
#include <unistd.h>

namespace vorn {
namespace templates {
namespace platform {
namespace native {

struct Mutex
{
    std::recursive_mutex mutex;
};

struct Event
{
    std::mutex mutex;
    std::condition_variable changed;
    bool signalled = false;
};

struct CriticalSection
{
    std::recursive_mutex mutex;
};

ThreadId currentThreadId()
{
    // The kernel's thread id: small, never 0, and the number other tools show for the thread. Asked
    // once per thread, because the spin locks ask for it on every acquisition.
    static thread_local const ThreadId id = static_cast<ThreadId>(::syscall(SYS_gettid));
    return id;
}

LockWord interlockedCompareExchange(volatile LockWord* target, LockWord exchange, LockWord comparand)
{
    LockWord expected = comparand;
    __atomic_compare_exchange_n(target, &expected, exchange, false, __ATOMIC_SEQ_CST, __ATOMIC_SEQ_CST);
    return expected;
}

LockWord interlockedExchange(volatile LockWord* target, LockWord value)
{
    return __atomic_exchange_n(target, value, __ATOMIC_SEQ_CST);
}

ThreadId loadThreadId(const volatile ThreadId* source)
{
    return __atomic_load_n(source, __ATOMIC_RELAXED);
}

void storeThreadId(volatile ThreadId* target, ThreadId value)
{
    __atomic_store_n(target, value, __ATOMIC_RELAXED);
}

Mutex* createMutex()
{
    return new Mutex;
}

void waitMutex(Mutex* mutex)
{
    mutex->mutex.lock();
}

void releaseMutex(Mutex* mutex)
{
    mutex->mutex.unlock();
}

void closeMutex(Mutex* mutex)
{
    delete mutex;
}

Event* createManualResetEvent(bool signalled)
{
    auto* event = new Event;
    event->signalled = signalled;
    return event;
}

void setEvent(Event* event)
{
    {
        std::lock_guard<std::mutex> lock(event->mutex);
        event->signalled = true;
    }
    event->changed.notify_all();
}

void resetEvent(Event* event)
{
    std::lock_guard<std::mutex> lock(event->mutex);
    event->signalled = false;
}

void waitEvent(Event* event)
{
    std::unique_lock<std::mutex> lock(event->mutex);
    event->changed.wait(lock, [event] { return event->signalled; });
}

void closeEvent(Event* event)
{
    delete event;
}

CriticalSection* createCriticalSection()
{
    return new CriticalSection;
}

void enterCriticalSection(CriticalSection* section)
{
    section->mutex.lock();
}

void leaveCriticalSection(CriticalSection* section)
{
    section->mutex.unlock();
}

void deleteCriticalSection(CriticalSection* section)
{
    delete section;
}

} // namespace native
} // namespace platform
} // namespace templates
} // namespace vorn
