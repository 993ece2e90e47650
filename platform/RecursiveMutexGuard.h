#pragma once

#include <vorn/platform/Guard.h>
#include <vorn/platform/RecursiveMutex.h>

namespace vorn {
namespace templates {
namespace platform {

// Locks a RecursiveMutex for the guard's lifetime.
class RecursiveMutexGuard : public patterns::Guard<RecursiveMutex*>
{
public:
    explicit RecursiveMutexGuard(RecursiveMutex* mutex);
    ~RecursiveMutexGuard() override;
};

} // namespace platform
} // namespace templates
} // namespace vorn
