#pragma once

#include <cstddef>
#include <string>

namespace vorn {
namespace tools {
namespace logging {

// The product's installation root, under which the logging dispatcher is installed. It is found from
// this library's own module path: the nearest directory above the module named bin, dll,
// Hardware Applets, lib or lib64 (in any case) is cut off, and what remains is the root. A module
// installed elsewhere falls back to the environment, VORNDIR5_64 before VORNDIR5.
//
// A root once found is cached for the life of the module; a failed lookup is not, so the next one tries
// again (an environment variable may have been set meanwhile).
class InstallationRoot
{
public:
    // The size of the path buffers, terminator included.
    static constexpr std::size_t kPathCapacity = 1024;

    // Looks the root up from this library's module path. Null when there is none.
    static const char* find();
    // The same lookup for a given module path (null: the module path could not be had). The returned
    // text stays valid until resetCache().
    static const char* findFromModulePath(const char* modulePath);

    // The walk up a module path alone: the root it yields, if any.
    static bool rootFromModulePath(const char* modulePath, std::string* root);

    // Forgets a cached root.
    static void resetCache();
};

} // namespace logging
} // namespace tools
} // namespace vorn
