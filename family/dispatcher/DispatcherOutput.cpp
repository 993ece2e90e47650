#include "family/dispatcher/DispatcherOutput.h"

#include "family/dispatcher/CommonLoggingDispatcher.h"

#include <chrono>
#include <ctime>

namespace vorn {
namespace dispatcher {

namespace {

std::string timestamp()
{
    const auto now = std::chrono::system_clock::now();
    const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
    const auto millis =
        std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()).count() % 1000;
    std::tm local{};
#if defined(_WIN32)
    localtime_s(&local, &seconds);
#else
    localtime_r(&seconds, &local);
#endif
    char text[40];
    const std::size_t length = std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &local);
    std::snprintf(text + length, sizeof text - length, ".%03d", static_cast<int>(millis));
    return text;
}

} // namespace

DispatcherOutput::~DispatcherOutput()
{
    if (m_ownsStream)
        std::fclose(m_stream);
}

void DispatcherOutput::open(const std::string& target)
{
    std::lock_guard<std::mutex> lock(m_mutex);
    if (m_ownsStream)
        std::fclose(m_stream);
    m_ownsStream = false;
    m_stream = stderr;
    if (target == "stdout") {
        m_stream = stdout;
    } else if (!target.empty() && target != "stderr") {
        if (std::FILE* file = std::fopen(target.c_str(), "a")) {
            m_stream = file;
            m_ownsStream = true;
        }
    }
}

void DispatcherOutput::write(const std::string& logger, std::uint32_t level, const char* message,
                             const char* file, int line)
{
    const std::string time = timestamp();
    std::lock_guard<std::mutex> lock(m_mutex);
    std::FILE* stream = m_stream ? m_stream : stderr;
    if (file)
        std::fprintf(stream, "%s %s %s - %s (%s:%d)\n", time.c_str(), levelName(level), logger.c_str(),
                     message ? message : "", file, line);
    else
        std::fprintf(stream, "%s %s %s - %s\n", time.c_str(), levelName(level), logger.c_str(),
                     message ? message : "");
    std::fflush(stream);
}

} // namespace dispatcher
} // namespace vorn
