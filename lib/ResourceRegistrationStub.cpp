// The library frame built without Qt carries no resources, so there is nothing to register.
#include <vorn/lib/private/ResourceRegistration.h>

namespace vorn {
namespace core {

int registerLibraryResources()
{
    return 1;
}

int unregisterLibraryResources()
{
    return 1;
}

} // namespace core
} // namespace vorn
