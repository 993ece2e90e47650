#pragma once

#include <vorn/platform/NativeSync.h>

#include <atomic>
#include <cstdint>

namespace vorn {
namespace templates {
namespace platform {

// A mutex that the thread holding it may lock again; it is free once every lock was matched by an
// unlock. Re-entry comes from the operating system mutex itself, not from bookkeeping here.
class RecursiveMutex
{
public:
    RecursiveMutex();
    virtual ~RecursiveMutex();
    RecursiveMutex(const RecursiveMutex&) = delete;
    RecursiveMutex& operator=(const RecursiveMutex&) = delete;

    // Waits without time-out.
    void lock();
    void unlock();

    // Acquisitions not yet released, over all threads; for diagnostics only, never for decisions.
    std::int32_t lockCount() const { return m_lockCount.load(); }

private:
    native::Mutex* m_handle;
    // Changed after the mutex is taken and after it is released, so it is atomic.
    std::atomic<std::int32_t> m_lockCount{0};
};

} // namespace platform
} // namespace templates
} // namespace vorn
