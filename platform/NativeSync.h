#pragma once

#include <cstdint>

namespace vorn {
namespace templates {
namespace platform {

// The 32-bit word a spin lock works on: 0 = free, 1 = held. On Windows it is the LONG that the
// Interlocked functions take.
#if defined(_WIN32)
using LockWord = long;
#else
using LockWord = std::int32_t;
#endif

// A 32-bit thread id; 0 never names a thread, so it means "no owner".
using ThreadId = std::uint32_t;

// The few operating system primitives the locks are built from, with one implementation per platform
// (NativeSyncWindows.cpp, NativeSyncPosix.cpp). They mirror the Windows objects one to one, so that the
// locks above them are written once and behave the same everywhere: a recursive mutex, a manual-reset
// event, a critical section and the two interlocked operations on a lock word.
namespace native {

ThreadId currentThreadId();

// Both return the word's previous value and are full barriers.
LockWord interlockedCompareExchange(volatile LockWord* target, LockWord exchange, LockWord comparand);
LockWord interlockedExchange(volatile LockWord* target, LockWord value);

// A lock's owner id is read by threads that do not hold the lock (to detect re-entry), so it is
// loaded and stored as a whole word.
ThreadId loadThreadId(const volatile ThreadId* source);
void storeThreadId(volatile ThreadId* target, ThreadId value);

// A mutex the owning thread may take again; it must release it as often as it took it.
struct Mutex;
Mutex* createMutex();
void waitMutex(Mutex* mutex);
void releaseMutex(Mutex* mutex);
void closeMutex(Mutex* mutex);

// An event that stays signalled until it is reset; waiting on a signalled event returns at once.
struct Event;
Event* createManualResetEvent(bool signalled);
void setEvent(Event* event);
void resetEvent(Event* event);
void waitEvent(Event* event);
void closeEvent(Event* event);

struct CriticalSection;
CriticalSection* createCriticalSection();
void enterCriticalSection(CriticalSection* section);
void leaveCriticalSection(CriticalSection* section);
void deleteCriticalSection(CriticalSection* section);

} // namespace native
} // namespace platform
} // namespace templates
} // namespace vorn
