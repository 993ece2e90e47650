#pragma once

#include <vorn/platform/GuardedSingletonBase.h>
#include <vorn/platform/SpinLockVariableGuard.h>

// A process-wide T, created on first use and destroyed at the library's last deinit (its module's
// registrar, see GuardedSingletonBase), after which the next use creates a fresh one. T derives from
// GuardedSingleton<T> and befriends it, so that only instance() constructs it.
//
// The instance pointer and its lock are per T and per module. A T that other modules must reach offers
// an accessor defined in its own module instead of letting them instantiate instance(): on Windows each
// module would otherwise get its own copy of these statics, and with it its own T.
template <class T> class GuardedSingleton : public GuardedSingletonBase
{
public:
    static T* instance()
    {
        // The owner form makes creation safe against re-entry: T's constructor or initialisation hook
        // may reach instance() again on the same thread.
        vorn::templates::platform::SpinLockVariableGuard guard(&s_lockWord, &s_lockOwner);
        if (s_instance)
            return static_cast<T*>(s_instance);
        T* created = new T();
        s_instance = created;
        GuardedSingletonBase::registerCreated(created);
        created->initialise();
        return created;
    }

    // Whether a T exists now (it may be gone again by the time the caller looks).
    static bool exists()
    {
        vorn::templates::platform::SpinLockVariableGuard guard(&s_lockWord, &s_lockOwner);
        return s_instance != nullptr;
    }

protected:
    GuardedSingleton() = default;

    GuardedSingletonBase** instancePointerAddress() override { return &s_instance; }

private:
    static inline GuardedSingletonBase* s_instance = nullptr;
    static inline volatile vorn::templates::platform::LockWord s_lockWord = 0;
    static inline volatile vorn::templates::platform::ThreadId s_lockOwner = 0;
};
