#pragma once

#include <vorn/base/VornExport.h>

#include <string>

namespace vorn {
namespace core {

// The host application's settings, as the family libraries see them: integer entries by key.
// The store is process-wide and thread-safe; a host fills it at start-up (setConfigIntEntry or
// loadConfig) and may persist it with saveConfig. The file format is one "key=value" line per entry.
class VORN_CORE_API MovaniApplication
{
public:
    static long long getConfigIntEntry(const std::string& key, long long defaultValue);
    // A number that changes whenever any entry changes, so that a caller that reads an entry often
    // can keep it and read it again only after a change.
    static unsigned long long configGeneration();
    static void setConfigIntEntry(const std::string& key, long long value);
    static bool removeConfigEntry(const std::string& key);
    static void clearConfig();

    // Both return false and describe the problem in *error (when given) on failure.
    static bool loadConfig(const std::string& path, std::string* error = nullptr);
    static bool saveConfig(const std::string& path, std::string* error = nullptr);
};

} // namespace core
} // namespace vorn
