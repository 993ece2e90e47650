#include <vorn/platform/RecursiveMutexGuard.h>

#include <cassert>

namespace vorn {
namespace templates {
namespace platform {

RecursiveMutexGuard::RecursiveMutexGuard(RecursiveMutex* mutex) : Guard(mutex)
{
    assert(mutex);
    mutex->lock();
    m_locked = true;
}

// The base releases the mutex; the destructor is out of line to keep the class's table of virtual
// functions in this module.
RecursiveMutexGuard::~RecursiveMutexGuard() = default;

} // namespace platform
} // namespace templates
} // namespace vorn
