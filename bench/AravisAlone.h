#pragma once

// What the GenICam library does on its own, as the floor our backend is compared with. Kept apart from
// the Qt code: GLib's headers use words that Qt defines as macros.

#include <string>

namespace vorn {
namespace bench {

// Reads the description and parses it with arv_gc_new(); wall-clock milliseconds, or NaN.
double aravisParseMs(const std::string& path);

// Serves the description from register memory (as our backend does offline) and prints every feature
// below Root with its value as text, indented by depth; the exit code of the program.
int aravisDump(const std::string& path);

} // namespace bench
} // namespace vorn
