#pragma once

#include <vorn/platform/NativeSync.h>

namespace vorn {
namespace templates {
namespace platform {

// Holds a spin lock on a 32-bit lock word (0 free, 1 held) for the guard's lifetime. The lock guards
// only short sections, so a waiting thread spins on the word without sleeping or yielding.
//
// With an owner id the lock is re-entrant: a thread that already owns it takes nothing and releases
// nothing, so only its outermost guard frees the word. Without one it is a plain, non-re-entrant lock.
class SpinLockVariableGuard
{
public:
    explicit SpinLockVariableGuard(volatile LockWord* lockWord);
    SpinLockVariableGuard(volatile LockWord* lockWord, volatile ThreadId* owner);
    virtual ~SpinLockVariableGuard();
    SpinLockVariableGuard(const SpinLockVariableGuard&) = delete;
    SpinLockVariableGuard& operator=(const SpinLockVariableGuard&) = delete;

    // Whether this guard took the word (false for a re-entry), and so releases it when it goes.
    bool tookLock() const { return m_tookLock; }

private:
    void acquire();

    volatile LockWord* m_lockWord;
    volatile ThreadId* m_owner;
    bool m_tookLock = false;
};

} // namespace platform
} // namespace templates
} // namespace vorn
