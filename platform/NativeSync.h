#pragma once

#include "lib/VornParametersQt4Export.h"

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

VORN_PARAMETERSQT4_API ThreadId currentThreadId();

// Both return the word's previous value and are full barriers.
VORN_PARAMETERSQT4_API LockWord interlockedCompareExchange(volatile LockWord* target, LockWord exchange,
                                                           LockWord comparand);
VORN_PARAMETERSQT4_API LockWord interlockedExchange(volatile LockWord* target, LockWord value);

// A lock's owner id is read by threads that do not hold the lock (to detect re-entry), so it is
// loaded and stored as a whole word.
VORN_PARAMETERSQT4_API ThreadId loadThreadId(const volatile ThreadId* source);
VORN_PARAMETERSQT4_API void storeThreadId(volatile ThreadId* target, ThreadId value);

// A mutex the owning thread may take again; it must release it as often as it took it.
struct Mutex;
VORN_PARAMETERSQT4_API Mutex* createMutex();
VORN_PARAMETERSQT4_API void waitMutex(Mutex* mutex);
VORN_PARAMETERSQT4_API void releaseMutex(Mutex* mutex);
VORN_PARAMETERSQT4_API void closeMutex(Mutex* mutex);

// An event that stays signalled until it is reset; waiting on a signalled event returns at once.
struct Event;
VORN_PARAMETERSQT4_API Event* createManualResetEvent(bool signalled);
VORN_PARAMETERSQT4_API void setEvent(Event* event);
VORN_PARAMETERSQT4_API void resetEvent(Event* event);
VORN_PARAMETERSQT4_API void waitEvent(Event* event);
VORN_PARAMETERSQT4_API void closeEvent(Event* event);

struct CriticalSection;
VORN_PARAMETERSQT4_API CriticalSection* createCriticalSection();
VORN_PARAMETERSQT4_API void enterCriticalSection(CriticalSection* section);
VORN_PARAMETERSQT4_API void leaveCriticalSection(CriticalSection* section);
VORN_PARAMETERSQT4_API void deleteCriticalSection(CriticalSection* section);

} // namespace native
} // namespace platform
} // namespace templates
} // namespace vorn
