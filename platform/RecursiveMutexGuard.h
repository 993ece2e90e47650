#pragma once

#include "lib/VornParametersQt4Export.h"
#include "platform/Guard.h"
#include "platform/RecursiveMutex.h"

namespace vorn {
namespace templates {
namespace platform {

// Locks a RecursiveMutex for the guard's lifetime.
class VORN_PARAMETERSQT4_API RecursiveMutexGuard : public patterns::Guard<RecursiveMutex*>
{
public:
    explicit RecursiveMutexGuard(RecursiveMutex* mutex);
    ~RecursiveMutexGuard() override;
};

} // namespace platform
} // namespace templates
} // namespace vorn
