// The library frame built without Qt carries no resources, so there is nothing to register.
#include "lib/ResourceRegistration.h"

namespace vorn {
namespace core {

void registerLibraryResources() {}

void unregisterLibraryResources() {}

} // namespace core
} // namespace vorn
