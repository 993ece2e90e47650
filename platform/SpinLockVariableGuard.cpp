#include <vorn/platform/SpinLockVariableGuard.h>

#include <cassert>

namespace vorn {
namespace templates {
namespace platform {

SpinLockVariableGuard::SpinLockVariableGuard(volatile LockWord* lockWord)
    : m_lockWord(lockWord), m_owner(nullptr)
{
    assert(lockWord);
    acquire();
}

SpinLockVariableGuard::SpinLockVariableGuard(volatile LockWord* lockWord, volatile ThreadId* owner)
    : m_lockWord(lockWord), m_owner(owner)
{
    assert(lockWord && owner);
    const ThreadId self = native::currentThreadId();
    // Only this thread can have written its own id, so the check needs no lock.
    if (native::loadThreadId(owner) == self)
        return;
    acquire();
    native::storeThreadId(owner, self);
}

SpinLockVariableGuard::~SpinLockVariableGuard()
{
    if (!m_tookLock)
        return;
    if (m_owner)
        native::storeThreadId(m_owner, 0);
    native::interlockedExchange(m_lockWord, 0);
}

void SpinLockVariableGuard::acquire()
{
    while (native::interlockedCompareExchange(m_lockWord, 1, 0) != 0) {
    }
    m_tookLock = true;
}

} // namespace platform
} // namespace templates
} // namespace vorn
