#include <vorn/platform/ReadWriteLockGuard.h>

#include <cassert>

namespace vorn {
namespace templates {
namespace platform {

ReadWriteLockGuard::ReadWriteLockGuard(ReadWriteLock* lock, Mode mode) : Guard(lock), m_mode(mode)
{
    assert(lock && (mode == Read || mode == Write));
    if (mode == Write)
        lock->lockWrite();
    else
        lock->lockRead();
    m_locked = true;
}

// The base releases the lock (one unlock serves both modes).
ReadWriteLockGuard::~ReadWriteLockGuard() = default;

} // namespace platform
} // namespace templates
} // namespace vorn
