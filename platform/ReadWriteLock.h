#pragma once

#include <vorn/platform/NativeSync.h>

#include <cstdint>

namespace vorn {
namespace templates {
namespace platform {

// Many readers or one writer. Writers take precedence over new readers: once a writer has announced
// itself, readers that arrive later wait until it has had its turn, so a steady stream of readers
// cannot starve it. Not re-entrant in either mode.
class ReadWriteLock
{
public:
    ReadWriteLock();
    virtual ~ReadWriteLock();
    ReadWriteLock(const ReadWriteLock&) = delete;
    ReadWriteLock& operator=(const ReadWriteLock&) = delete;

    void lockRead();
    void lockWrite();
    // Releases either mode: the lock knows whether a writer or readers hold it.
    void unlock();

    // Snapshots of the state, for diagnostics and tests.
    std::uint32_t readers() const;
    std::uint32_t waitingWriters() const;
    bool writerActive() const;

private:
    std::uint32_t m_readers = 0;
    std::uint32_t m_waitingWriters = 0;
    bool m_writerActive = false;
    native::Event* m_noReaders;       // manual reset, signalled while no reader holds the lock
    native::Event* m_noWriter;        // manual reset, signalled while no writer holds the lock
    native::CriticalSection* m_state; // guards the three counters above
};

} // namespace platform
} // namespace templates
} // namespace vorn
