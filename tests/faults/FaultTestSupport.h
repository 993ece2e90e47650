#pragma once

// What the fault tests share: the stall bound of the GUI thread, memory figures, and one line of
// results per test in the output ("[ fault    ] ...").

#include "support/StallProbe.h"

#include <QByteArray>
#include <QFile>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <iostream>
#include <malloc.h>
#include <string>
#include <unistd.h>

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define VORN_TEST_SANITIZED 1
#endif
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define VORN_TEST_SANITIZED 1
#endif
#ifdef VORN_TEST_SANITIZED
#include <sanitizer/allocator_interface.h>
#endif

namespace vorn {
namespace test {

// The longest the GUI thread may be kept busy without getting back to its event loop, and the longest
// gap in wall time (waits for a processor on a busy machine included: a hang shows here). Sanitized
// builds check memory and threads, not speed: every allocation there records its stack, which makes
// the GUI thread's work many times slower, so their bounds only catch hangs.
#ifdef VORN_TEST_SANITIZED
const qint64 kMaxStallMs = 1000;
const qint64 kMaxWallStallMs = 10000;
#else
const qint64 kMaxStallMs = 100;
const qint64 kMaxWallStallMs = 1000;
#endif

// The longest stalls of one or more probes: wall time, and the part the GUI thread was busy.
struct Stalls
{
    qint64 wallMs = 0;
    qint64 busyMs = 0;

    void take(const StallProbe& probe)
    {
        wallMs = std::max(wallMs, probe.longestMs());
        busyMs = std::max(busyMs, probe.longestBusyMs());
    }
    std::string text() const
    {
        return "longest GUI stall " + std::to_string(wallMs) + " ms (" + std::to_string(busyMs) +
               " ms of it busy)";
    }
    // Stalls are measured and reported, not asserted: the machines are shared and noisy, and the
    // benchmarks are where time is judged. A stall beyond the bounds is called out in the output.
    void reportAgainstBounds() const
    {
        if (busyMs >= kMaxStallMs || wallMs >= kMaxWallStallMs)
            std::cout << "[ stall    ] above the bound of " << kMaxStallMs << " ms busy / " << kMaxWallStallMs
                      << " ms wall: " << text() << std::endl;
    }
};

// Bytes the program has allocated and not freed.
inline std::uint64_t heapInUse()
{
#ifdef VORN_TEST_SANITIZED
    return __sanitizer_get_current_allocated_bytes();
#else
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
#endif
}

// The resident set of the process, after freed memory went back to the system where it can.
inline std::uint64_t residentBytes()
{
    malloc_trim(0);
    QFile statm(QStringLiteral("/proc/self/statm"));
    if (!statm.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> fields = statm.readAll().split(' ');
    return fields.size() > 1 ? fields.at(1).toULongLong() * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE))
                             : 0;
}

inline double mebibytes(std::uint64_t bytes)
{
    return bytes / (1024.0 * 1024.0);
}

inline void reportFault(const std::string& text)
{
    std::cout << "[ fault    ] " << text << std::endl;
}

} // namespace test
} // namespace vorn
