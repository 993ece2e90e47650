#pragma once

#include <vorn/platform/Guard.h>
#include <vorn/platform/ReadWriteLock.h>

namespace vorn {
namespace templates {
namespace platform {

// Locks a ReadWriteLock in read or write mode for the guard's lifetime.
class ReadWriteLockGuard : public patterns::Guard<ReadWriteLock*>
{
public:
    enum Mode { Read = 1, Write = 2 };

    ReadWriteLockGuard(ReadWriteLock* lock, Mode mode);
    ~ReadWriteLockGuard() override;

    Mode mode() const { return m_mode; }

private:
    Mode m_mode;
};

} // namespace platform
} // namespace templates
} // namespace vorn
