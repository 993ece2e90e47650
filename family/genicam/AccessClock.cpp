#include "family/genicam/AccessClock.h"

#include <algorithm>
#include <chrono>

namespace vorn {
namespace core {
namespace models {
namespace genicam {

AccessClock::AccessClock(std::atomic<std::int64_t>& started) : m_started(started)
{
    m_outer = m_started.load() == 0;
    if (m_outer)
        m_started.store(nowMs());
}

AccessClock::~AccessClock()
{
    if (m_outer)
        m_started.store(0);
}

std::int64_t AccessClock::nowMs()
{
    const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(
                        std::chrono::steady_clock::now().time_since_epoch())
                        .count();
    return std::max<std::int64_t>(1, ms);
}

} // namespace genicam
} // namespace models
} // namespace core
} // namespace vorn
