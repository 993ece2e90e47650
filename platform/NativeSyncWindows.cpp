// The lock primitives on the Windows kernel: mutex, manual-reset events, critical sections and the
// Interlocked calls. The opaque native types are the kernel handles (or the CRITICAL_SECTION) themselves.
#include <vorn/platform/NativeSync.h>

#include <vorn/base/WindowsApi.h>

namespace vorn {
namespace templates {
namespace platform {
namespace native {

ThreadId currentThreadId()
{
    return static_cast<ThreadId>(GetCurrentThreadId());
}

LockWord interlockedCompareExchange(volatile LockWord* target, LockWord exchange, LockWord comparand)
{
    return InterlockedCompareExchange(target, exchange, comparand);
}

LockWord interlockedExchange(volatile LockWord* target, LockWord value)
{
    return InterlockedExchange(target, value);
}

// Aligned 32-bit reads and writes are atomic on Windows' processors.
ThreadId loadThreadId(const volatile ThreadId* source)
{
    return *source;
}

void storeThreadId(volatile ThreadId* target, ThreadId value)
{
    *target = value;
}

Mutex* createMutex()
{
    return reinterpret_cast<Mutex*>(CreateMutexA(nullptr, FALSE, nullptr));
}

void waitMutex(Mutex* mutex)
{
    WaitForSingleObject(reinterpret_cast<HANDLE>(mutex), INFINITE);
}

void releaseMutex(Mutex* mutex)
{
    ReleaseMutex(reinterpret_cast<HANDLE>(mutex));
}

void closeMutex(Mutex* mutex)
{
    CloseHandle(reinterpret_cast<HANDLE>(mutex));
}

Event* createManualResetEvent(bool signalled)
{
    return reinterpret_cast<Event*>(CreateEventA(nullptr, TRUE, signalled ? TRUE : FALSE, nullptr));
}

void setEvent(Event* event)
{
    SetEvent(reinterpret_cast<HANDLE>(event));
}

void resetEvent(Event* event)
{
    ResetEvent(reinterpret_cast<HANDLE>(event));
}

void waitEvent(Event* event)
{
    WaitForSingleObject(reinterpret_cast<HANDLE>(event), INFINITE);
}

void closeEvent(Event* event)
{
    CloseHandle(reinterpret_cast<HANDLE>(event));
}

CriticalSection* createCriticalSection()
{
    auto* section = new CRITICAL_SECTION;
    InitializeCriticalSection(section);
    return reinterpret_cast<CriticalSection*>(section);
}

void enterCriticalSection(CriticalSection* section)
{
    EnterCriticalSection(reinterpret_cast<CRITICAL_SECTION*>(section));
}

void leaveCriticalSection(CriticalSection* section)
{
    LeaveCriticalSection(reinterpret_cast<CRITICAL_SECTION*>(section));
}

void deleteCriticalSection(CriticalSection* section)
{
    auto* native = reinterpret_cast<CRITICAL_SECTION*>(section);
    DeleteCriticalSection(native);
    delete native;
}

} // namespace native
} // namespace platform
} // namespace templates
} // namespace vorn
