#pragma once

#include <QElapsedTimer>
#include <QTimer>

#include <algorithm>
#include <ctime>

namespace vorn {
namespace test {

// Measures how long the event loop of the thread that makes it went without getting to a 5 ms
// timer: the longest stall a user of the GUI would have felt while the probe lived. Also how much
// of the longest gap the thread itself was busy (its processor time): on a machine shared with other
// work a thread waits for a processor too, and that wait is not the code's doing.
class StallProbe
{
public:
    StallProbe()
    {
        QObject::connect(&m_timer, &QTimer::timeout, [this] {
            const double now = threadMs();
            m_longest = std::max(m_longest, m_sinceTick.elapsed());
            m_longestBusy = std::max(m_longestBusy, static_cast<qint64>(now - m_busyAtTick));
            m_sinceTick.restart();
            m_busyAtTick = now;
        });
        m_sinceTick.start();
        m_busyAtTick = threadMs();
        m_timer.start(5);
    }
    qint64 longestMs() const { return std::max(m_longest, m_sinceTick.elapsed()); }
    qint64 longestBusyMs() const
    {
        return std::max(m_longestBusy, static_cast<qint64>(threadMs() - m_busyAtTick));
    }

private:
    static double threadMs()
    {
        timespec t;
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
        return t.tv_sec * 1000.0 + t.tv_nsec / 1e6;
    }

    QTimer m_timer;
    QElapsedTimer m_sinceTick;
    double m_busyAtTick = 0;
    qint64 m_longest = 0;
    qint64 m_longestBusy = 0;
};

} // namespace test
} // namespace vorn
