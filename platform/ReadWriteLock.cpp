#include <vorn/platform/ReadWriteLock.h>

#include <cassert>

namespace vorn {
namespace templates {
namespace platform {

ReadWriteLock::ReadWriteLock()
    : m_noReaders(native::createManualResetEvent(true)), m_noWriter(native::createManualResetEvent(true)),
      m_state(native::createCriticalSection())
{
    assert(m_noReaders && m_noWriter && m_state);
}

ReadWriteLock::~ReadWriteLock()
{
    native::deleteCriticalSection(m_state);
    native::closeEvent(m_noReaders);
    native::closeEvent(m_noWriter);
}

void ReadWriteLock::lockRead()
{
    // The events only say when it is worth looking again; the decision is taken under the state lock.
    for (;;) {
        native::waitEvent(m_noWriter);
        native::enterCriticalSection(m_state);
        if (!m_writerActive && m_waitingWriters == 0) {
            ++m_readers;
            native::resetEvent(m_noReaders);
            native::leaveCriticalSection(m_state);
            return;
        }
        native::leaveCriticalSection(m_state);
    }
}

void ReadWriteLock::lockWrite()
{
    // Announcing the writer first is what holds back readers that come after it.
    native::enterCriticalSection(m_state);
    ++m_waitingWriters;
    native::leaveCriticalSection(m_state);

    for (;;) {
        native::waitEvent(m_noReaders);
        native::waitEvent(m_noWriter);
        native::enterCriticalSection(m_state);
        if (m_readers == 0 && !m_writerActive) {
            --m_waitingWriters;
            m_writerActive = true;
            native::resetEvent(m_noWriter);
            native::leaveCriticalSection(m_state);
            return;
        }
        native::leaveCriticalSection(m_state);
    }
}

void ReadWriteLock::unlock()
{
    native::enterCriticalSection(m_state);
    if (m_writerActive) {
        m_writerActive = false;
        native::setEvent(m_noWriter);
    } else {
        assert(m_readers > 0 && "unlock without a lock");
        if (--m_readers == 0)
            native::setEvent(m_noReaders);
    }
    native::leaveCriticalSection(m_state);
}

std::uint32_t ReadWriteLock::readers() const
{
    native::enterCriticalSection(m_state);
    const std::uint32_t readers = m_readers;
    native::leaveCriticalSection(m_state);
    return readers;
}

std::uint32_t ReadWriteLock::waitingWriters() const
{
    native::enterCriticalSection(m_state);
    const std::uint32_t writers = m_waitingWriters;
    native::leaveCriticalSection(m_state);
    return writers;
}

bool ReadWriteLock::writerActive() const
{
    native::enterCriticalSection(m_state);
    const bool active = m_writerActive;
    native::leaveCriticalSection(m_state);
    return active;
}

} // namespace platform
} // namespace templates
} // namespace vorn
