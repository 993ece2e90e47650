#include "family/dispatcher/DispatcherConfiguration.h"

#include "family/dispatcher/CommonLoggingDispatcher.h"

#include <cctype>
#include <cstdlib>
#include <fstream>

namespace vorn {
namespace dispatcher {

namespace {

const char* const kLevelNames[] = {"trace", "debug", "info", "notice", "warning", "error", "fatal", "off"};
const char* const kLevelLabels[] = {"TRACE", "DEBUG", "INFO ", "NOTE ", "WARN ", "ERROR", "FATAL", "OFF  "};

std::string trimmed(const std::string& text)
{
    std::size_t begin = 0;
    std::size_t end = text.size();
    while (begin < end && std::isspace(static_cast<unsigned char>(text[begin])))
        ++begin;
    while (end > begin && std::isspace(static_cast<unsigned char>(text[end - 1])))
        --end;
    return text.substr(begin, end - begin);
}

std::string lowered(std::string text)
{
    for (char& c : text)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

} // namespace

bool parseLevel(const std::string& text, std::uint32_t* level)
{
    const std::string value = lowered(trimmed(text));
    if (value.size() == 1 && value[0] >= '0' && value[0] <= '7') {
        *level = static_cast<std::uint32_t>(value[0] - '0');
        return true;
    }
    for (std::uint32_t i = 0; i < 8; ++i) {
        if (value == kLevelNames[i]) {
            *level = i;
            return true;
        }
    }
    if (value == "warn") {
        *level = 4;
        return true;
    }
    return false;
}

const char* levelName(std::uint32_t level)
{
    return level < 8 ? kLevelLabels[level] : "LEVEL";
}

DispatcherConfiguration::DispatcherConfiguration() : m_defaultLevel(kDefaultLevel), m_output("stderr") {}

DispatcherConfiguration DispatcherConfiguration::load(const std::string& defaultFile)
{
    DispatcherConfiguration configuration;
    if (const char* path = std::getenv("VORN_LOG_CONFIG"))
        configuration.applyFile(path);
    else if (!defaultFile.empty())
        configuration.applyFile(defaultFile);
    configuration.applyEnvironment();
    return configuration;
}

void DispatcherConfiguration::applyLevels(const std::string& list)
{
    std::size_t start = 0;
    while (start <= list.size()) {
        std::size_t comma = list.find(',', start);
        if (comma == std::string::npos)
            comma = list.size();
        const std::string entry = list.substr(start, comma - start);
        start = comma + 1;
        const std::size_t equals = entry.find('=');
        if (equals == std::string::npos)
            continue;
        const std::string name = trimmed(entry.substr(0, equals));
        std::uint32_t level = 0;
        if (name.empty() || !parseLevel(entry.substr(equals + 1), &level))
            continue;
        if (name == "*")
            m_defaultLevel = level;
        else
            m_levels[name] = level;
    }
}

bool DispatcherConfiguration::applyFile(const std::string& path)
{
    std::ifstream in(path);
    if (!in)
        return false;
    std::string line;
    while (std::getline(in, line)) {
        const std::size_t hash = line.find('#');
        if (hash != std::string::npos)
            line.erase(hash);
        const std::size_t equals = line.find('=');
        if (equals == std::string::npos)
            continue;
        const std::string key = lowered(trimmed(line.substr(0, equals)));
        const std::string value = trimmed(line.substr(equals + 1));
        if (key == "levels")
            applyLevels(value);
        else if (key == "output" && !value.empty())
            m_output = value;
    }
    return true;
}

void DispatcherConfiguration::applyEnvironment()
{
    if (const char* levels = std::getenv("VORN_LOG_LEVELS"))
        applyLevels(levels);
    if (const char* output = std::getenv("VORN_LOG_OUTPUT")) {
        if (*output)
            m_output = output;
    }
}

std::uint32_t DispatcherConfiguration::levelFor(const std::string& name) const
{
    std::string candidate = name;
    for (;;) {
        const auto it = m_levels.find(candidate);
        if (it != m_levels.end())
            return it->second;
        const std::size_t dot = candidate.rfind('.');
        if (dot == std::string::npos)
            return m_defaultLevel;
        candidate.erase(dot);
    }
}

} // namespace dispatcher
} // namespace vorn
