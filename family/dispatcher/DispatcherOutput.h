#pragma once

#include <cstdint>
#include <cstdio>
#include <mutex>
#include <string>

namespace vorn {
namespace dispatcher {

// Where the dispatcher's records go: standard error, standard output or a file opened for appending.
// Lines from several threads never mix.
class DispatcherOutput
{
public:
    DispatcherOutput() = default;
    ~DispatcherOutput();
    DispatcherOutput(const DispatcherOutput&) = delete;
    DispatcherOutput& operator=(const DispatcherOutput&) = delete;

    // "stderr", "stdout" or a path; a file that cannot be opened falls back to standard error.
    void open(const std::string& target);
    void write(const std::string& logger, std::uint32_t level, const char* message, const char* file,
               int line);

private:
    std::mutex m_mutex;
    std::FILE* m_stream = nullptr;
    bool m_ownsStream = false;
};

} // namespace dispatcher
} // namespace vorn
