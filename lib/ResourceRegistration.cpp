// The library's resources are the parameter type icons.
#include "lib/ResourceRegistration.h"

#include "resources/ParameterIcons.h"

namespace vorn {
namespace core {

void registerLibraryResources()
{
    vornInitParameterIcons();
}

void unregisterLibraryResources()
{
    vornCleanupParameterIcons();
}

} // namespace core
} // namespace vorn
