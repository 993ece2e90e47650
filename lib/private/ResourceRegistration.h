#pragma once

namespace vorn {
namespace core {

// The library's compiled-in resources: the parameter type icons of resources/parameters.qrc, the
// resource compiler's collection. The collection also registers itself when the library is loaded and
// unregisters when it is unloaded; the entry points register it on every init and remove it on every
// deinit. The resource system keeps a collection once however often it is registered and drops it at
// the first removal, so the icons are there from load until the first deinit, and again after every
// later init. Both return 1, as the resource compiler's pair does.
int registerLibraryResources();
int unregisterLibraryResources();

} // namespace core
} // namespace vorn
