#pragma once

// Clocks, memory counters and medians for the benchmarks.

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QWidget>

#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace vorn {
namespace bench {

class Stopwatch
{
public:
    Stopwatch() { m_timer.start(); }
    double ms() const { return m_timer.nsecsElapsed() / 1e6; }

private:
    QElapsedTimer m_timer;
};

inline double median(std::vector<double> values)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    const std::size_t n = values.size();
    return n % 2 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2;
}

// Bytes in use on the heap (all arenas), as malloc counts them.
inline double heapInUse()
{
    return static_cast<double>(mallinfo2().uordblks + mallinfo2().hblkhd);
}

// Resident set size in bytes.
inline double residentBytes()
{
    long pages = 0;
    long resident = 0;
    if (FILE* f = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(f, "%ld %ld", &pages, &resident) != 2)
            resident = 0;
        std::fclose(f);
    }
    return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE));
}

// Heap and resident set before and after something that allocates.
class MemoryProbe
{
public:
    MemoryProbe()
    {
        malloc_trim(0); // hand freed pages back, so that what the next step touches shows in the RSS
        m_heap = heapInUse();
        m_rss = residentBytes();
    }
    double heapGrowth() const { return heapInUse() - m_heap; }
    double rssGrowth() const { return residentBytes() - m_rss; }

private:
    double m_heap;
    double m_rss;
};

// Counts the paint events a widget receives.
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget* widget) : m_widget(widget) { widget->installEventFilter(this); }
    ~PaintCounter() override
    {
        if (m_widget)
            m_widget->removeEventFilter(this);
    }
    int count() const { return m_count; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched == m_widget && event->type() == QEvent::Paint)
            ++m_count;
        return false;
    }

private:
    QWidget* m_widget;
    int m_count = 0;
};

// Runs the event loop until the widget has painted after `seen` paints (the event filter runs before
// the paint itself, so returning from processEvents means the frame is done), then lets queued work
// of the next turns (zero timers, the repaints they ask for) finish. A change that leaves the view as
// it was asks for no frame: after maxTurns turns of the loop without one, it is over.
inline void settleUntilPainted(const PaintCounter& counter, int seen, int maxTurns = 50)
{
    for (int turn = 0; counter.count() <= seen && turn < maxTurns; ++turn)
        QCoreApplication::processEvents(QEventLoop::AllEvents);
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents(QEventLoop::AllEvents);
}

} // namespace bench
} // namespace vorn
