#pragma once

#include <vorn/base/LoggingDispatcherDescriptor.h>
#include <vorn/platform/RecursiveMutex.h>

#include <atomic>
#include <cstdint>
#include <map>

namespace vorn {
namespace tools {
namespace logging {

class Logging;

// A named logger as the dispatcher hands it out: its identity there and its current threshold. Callers
// test isEnabledFor() before they format a message, so that a disabled level costs no formatting.
class Logger
{
public:
    // A logger the dispatcher has not described yet writes nothing below this threshold.
    static constexpr std::uint32_t kDefaultThreshold = 7;

    Logger(Logging* owner, logging_dispatcher_logger_id identity, std::uint32_t threshold);
    virtual ~Logger();
    Logger(const Logger&) = delete;
    Logger& operator=(const Logger&) = delete;

    logging_dispatcher_logger_id identity() const { return m_identity; }
    std::uint32_t threshold() const { return m_threshold.load(); }
    void setThreshold(std::uint32_t threshold) { m_threshold.store(threshold); }

    // True when level is at or above the threshold and the calling thread is not muted.
    bool isEnabledFor(std::uint32_t level) const;
    // Hands the record to the dispatcher when one is attached, otherwise drops it. file may be null.
    void log(std::uint32_t level, const char* message, const char* file, int line) const;

    // Silences this logger for the calling thread until the matching unmute (mutes nest). log() mutes
    // the thread while the dispatcher writes, so that a dispatcher that logs back cannot recurse.
    void muteCurrentThread() const;
    void unmuteCurrentThread() const;

private:
    Logging* m_owner;
    const logging_dispatcher_logger_id m_identity;
    std::atomic<std::uint32_t> m_threshold;
    mutable vorn::templates::platform::RecursiveMutex m_threadsMutex;
    // Muted threads and how often each is muted.
    mutable std::map<vorn::templates::platform::ThreadId, unsigned> m_mutedThreads;
};

} // namespace logging
} // namespace tools
} // namespace vorn
