#pragma once

#include <atomic>
#include <cstdint>

namespace vorn {
namespace core {
namespace models {
namespace genicam {

// Marks the device thread as waiting for the device while it lives: the GUI thread reads the mark to
// tell a device that takes long to answer from one that is gone, without waiting for it. Nested
// clocks leave the mark of the outermost.
class AccessClock
{
public:
    explicit AccessClock(std::atomic<std::int64_t>& started);
    ~AccessClock();
    AccessClock(const AccessClock&) = delete;
    AccessClock& operator=(const AccessClock&) = delete;

    // Milliseconds of the steady clock, never 0 (0 marks no access).
    static std::int64_t nowMs();

private:
    std::atomic<std::int64_t>& m_started;
    bool m_outer = false;
};

} // namespace genicam
} // namespace models
} // namespace core
} // namespace vorn
