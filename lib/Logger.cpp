#include <vorn/lib/private/Logger.h>

#include <vorn/lib/private/Logging.h>
#include <vorn/platform/RecursiveMutexGuard.h>

namespace vorn {
namespace tools {
namespace logging {

using templates::platform::RecursiveMutexGuard;
namespace native = templates::platform::native;

Logger::Logger(Logging* owner, logging_dispatcher_logger_id identity, std::uint32_t threshold)
    : m_owner(owner), m_identity(identity), m_threshold(threshold)
{}

Logger::~Logger() = default;

bool Logger::isEnabledFor(std::uint32_t level) const
{
    if (level < m_threshold.load())
        return false;
    RecursiveMutexGuard guard(&m_threadsMutex);
    return m_mutedThreads.find(native::currentThreadId()) == m_mutedThreads.end();
}

void Logger::log(std::uint32_t level, const char* message, const char* file, int line) const
{
    if (!m_owner)
        return;
    muteCurrentThread();
    m_owner->dispatch(*this, level, message, file, line);
    unmuteCurrentThread();
}

void Logger::muteCurrentThread() const
{
    RecursiveMutexGuard guard(&m_threadsMutex);
    ++m_mutedThreads[native::currentThreadId()];
}

void Logger::unmuteCurrentThread() const
{
    RecursiveMutexGuard guard(&m_threadsMutex);
    const auto it = m_mutedThreads.find(native::currentThreadId());
    if (it == m_mutedThreads.end())
        return;
    if (--it->second == 0)
        m_mutedThreads.erase(it);
}

} // namespace logging
} // namespace tools
} // namespace vorn
