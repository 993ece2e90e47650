#pragma once

#include <cstdint>

namespace vorn {
namespace tools {
namespace logging {

// Log levels, from the most verbose to the most severe. A logger writes the levels at or above its
// threshold; a threshold of Off writes nothing.
enum LogLevel : std::uint32_t {
    LogTrace = 0,
    LogDebug = 1,
    LogInfo = 2,
    LogNotice = 3,
    LogWarning = 4,
    LogError = 5,
    LogFatal = 6,
    LogOff = 7,
};

} // namespace logging
} // namespace tools
} // namespace vorn
