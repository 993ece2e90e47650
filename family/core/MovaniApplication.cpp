#include <vorn/host/MovaniApplication.h>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <map>
#include <mutex>
#include <sstream>

namespace vorn {
namespace core {

namespace {

struct ConfigStore
{
    std::mutex mutex;
    std::map<std::string, long long> entries;
    // Raised after every change, under the mutex.
    std::atomic<unsigned long long> generation{0};
};

ConfigStore& store()
{
    static ConfigStore instance;
    return instance;
}

void setError(std::string* error, const std::string& text)
{
    if (error)
        *error = text;
}

std::string trimmed(const std::string& text)
{
    const auto first = text.find_first_not_of(" \t\r");
    if (first == std::string::npos)
        return std::string();
    const auto last = text.find_last_not_of(" \t\r");
    return text.substr(first, last - first + 1);
}

} // namespace

long long MovaniApplication::getConfigIntEntry(const std::string& key, long long defaultValue)
{
    ConfigStore& s = store();
    std::lock_guard<std::mutex> lock(s.mutex);
    const auto it = s.entries.find(key);
    return it == s.entries.end() ? defaultValue : it->second;
}

unsigned long long MovaniApplication::configGeneration()
{
    return store().generation.load(std::memory_order_acquire);
}

void MovaniApplication::setConfigIntEntry(const std::string& key, long long value)
{
    ConfigStore& s = store();
    std::lock_guard<std::mutex> lock(s.mutex);
    s.entries[key] = value;
    s.generation.fetch_add(1, std::memory_order_release);
}

bool MovaniApplication::removeConfigEntry(const std::string& key)
{
    ConfigStore& s = store();
    std::lock_guard<std::mutex> lock(s.mutex);
    const bool erased = s.entries.erase(key) > 0;
    s.generation.fetch_add(1, std::memory_order_release);
    return erased;
}

void MovaniApplication::clearConfig()
{
    ConfigStore& s = store();
    std::lock_guard<std::mutex> lock(s.mutex);
    s.entries.clear();
    s.generation.fetch_add(1, std::memory_order_release);
}

bool MovaniApplication::loadConfig(const std::string& path, std::string* error)
{
    std::ifstream in(path);
    if (!in) {
        setError(error, "cannot open " + path + ": " + std::strerror(errno));
        return false;
    }
    // Parse everything first, so that a bad file changes nothing.
    std::map<std::string, long long> parsed;
    std::string line;
    int lineNumber = 0;
    while (std::getline(in, line)) {
        ++lineNumber;
        const std::string text = trimmed(line);
        if (text.empty() || text[0] == '#')
            continue;
        const auto eq = text.find('=');
        std::string key = eq == std::string::npos ? std::string() : trimmed(text.substr(0, eq));
        const std::string valueText = eq == std::string::npos ? std::string() : trimmed(text.substr(eq + 1));
        std::istringstream number(valueText);
        long long value = 0;
        if (key.empty() || !(number >> value) || !number.eof()) {
            setError(error, path + ":" + std::to_string(lineNumber) + ": expected key=integer, found \"" +
                                text + "\"");
            return false;
        }
        parsed[key] = value;
    }
    ConfigStore& s = store();
    std::lock_guard<std::mutex> lock(s.mutex);
    for (const auto& entry : parsed)
        s.entries[entry.first] = entry.second;
    s.generation.fetch_add(1, std::memory_order_release);
    return true;
}

bool MovaniApplication::saveConfig(const std::string& path, std::string* error)
{
    std::map<std::string, long long> copy;
    {
        ConfigStore& s = store();
        std::lock_guard<std::mutex> lock(s.mutex);
        copy = s.entries;
    }
    std::ofstream out(path, std::ios::trunc);
    if (!out) {
        setError(error, "cannot write " + path + ": " + std::strerror(errno));
        return false;
    }
    for (const auto& entry : copy)
        out << entry.first << '=' << entry.second << '\n';
    out.flush();
    if (!out) {
        setError(error, "cannot write " + path + ": " + std::strerror(errno));
        return false;
    }
    return true;
}

} // namespace core
} // namespace vorn
