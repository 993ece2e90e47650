#include <vorn/platform/RecursiveMutex.h>

#include <cassert>

namespace vorn {
namespace templates {
namespace platform {

RecursiveMutex::RecursiveMutex() : m_handle(native::createMutex())
{
    assert(m_handle);
}

RecursiveMutex::~RecursiveMutex()
{
    native::closeMutex(m_handle);
}

void RecursiveMutex::lock()
{
    native::waitMutex(m_handle);
    ++m_lockCount;
}

void RecursiveMutex::unlock()
{
    native::releaseMutex(m_handle);
    --m_lockCount;
}

} // namespace platform
} // namespace templates
} // namespace vorn
