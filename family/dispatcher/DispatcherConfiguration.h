#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace vorn {
namespace dispatcher {

// The dispatcher's settings: logger levels and where records go (see CommonLoggingDispatcher.h).
class DispatcherConfiguration
{
public:
    DispatcherConfiguration();

    // Reads the file named by VORN_LOG_CONFIG or else defaultFile (if not empty), then the environment.
    static DispatcherConfiguration load(const std::string& defaultFile);

    // "name=level, ..."; entries that do not parse are skipped.
    void applyLevels(const std::string& list);
    // Reads "key = value" lines; false when the file cannot be opened.
    bool applyFile(const std::string& path);
    void applyEnvironment();

    // The level of a logger: its own entry, the longest dotted prefix's, or the default.
    std::uint32_t levelFor(const std::string& name) const;
    void setLevel(const std::string& name, std::uint32_t level) { m_levels[name] = level; }
    const std::string& output() const { return m_output; }

private:
    std::map<std::string, std::uint32_t> m_levels;
    std::uint32_t m_defaultLevel;
    std::string m_output;
};

} // namespace dispatcher
} // namespace vorn
