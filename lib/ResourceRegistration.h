#pragma once

namespace vorn {
namespace core {

// The library's compiled-in resources (the parameter type icons). Registered on every init and
// unregistered on every deinit; the resource system counts neither, so the icons are there from an
// init to the next deinit (and from the library's load, by its own static registration).
void registerLibraryResources();
void unregisterLibraryResources();

} // namespace core
} // namespace vorn
