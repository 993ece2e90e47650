#include <vorn/lib/VornParametersQt4.h>

#include <vorn/base/LogLevel.h>
#include <vorn/host/VornCore.h>
#include <vorn/host/VornModelQt4.h>
#include <vorn/host/VornParameters.h>
#include <vorn/lib/private/LibraryInitController.h>
#include <vorn/lib/private/LibraryInitControllerInternal.h>
#include <vorn/lib/private/Logging.h>
#include <vorn/lib/private/ResourceRegistration.h>
#include <vorn/platform/NativeSync.h>

#include <atomic>
#include <string>

using vorn::core::LibraryDependency;
using vorn::tools::logging::Logger;
using vorn::tools::logging::Logging;

namespace {

const char kModuleTag[] = "VornParametersQt4";
const char kLifecycleLogger[] = "guard.library";
const std::uint32_t kLifecycleLevel = vorn::tools::logging::LogInfo;

// Initialised in this order; their deinits run in the reverse one.
const LibraryDependency kDependencies[] = {
    {&VornCoreInit, &VornCoreDeinit},
    {&VornParametersInit, &VornParametersDeinit},
    {&VornModelQt4Init, &VornModelQt4Deinit},
};

std::atomic<const LibraryDependency*> s_dependencies{kDependencies};
std::atomic<std::size_t> s_dependencyCount{sizeof kDependencies / sizeof kDependencies[0]};

// "thread-id=<id>|LIBRARY <what>: VornParametersQt4 (useCount: <count>)", formatted only when the logger
// writes the level.
void logLifecycle(const char* what, std::uint32_t useCount)
{
    Logger& logger = Logging::get()->getLogger(kLifecycleLogger);
    if (!logger.isEnabledFor(kLifecycleLevel))
        return;
    const std::string text =
        "thread-id=" + std::to_string(vorn::templates::platform::native::currentThreadId()) + "|LIBRARY " +
        what + ": " + kModuleTag + " (useCount: " + std::to_string(useCount) + ")";
    logger.log(kLifecycleLevel, text.c_str(), nullptr, 0);
}

} // namespace

namespace vorn {
namespace core {

const LibraryDependency* libraryDependencies(std::size_t* count)
{
    *count = s_dependencyCount.load();
    return s_dependencies.load();
}

void setLibraryDependencies(const LibraryDependency* dependencies, std::size_t count)
{
    if (!dependencies) {
        dependencies = kDependencies;
        count = sizeof kDependencies / sizeof kDependencies[0];
    }
    s_dependencies.store(dependencies);
    s_dependencyCount.store(count);
}

} // namespace core
} // namespace vorn

extern "C" {

void VornParametersQt4Init()
{
    vorn::core::registerLibraryResources();
    LibraryInitController::init();
    // The count after this init; read without the lock, like every log line's count.
    logLifecycle("INIT", LibraryInitController::useCount());
    std::size_t count = 0;
    const LibraryDependency* dependencies = vorn::core::libraryDependencies(&count);
    for (std::size_t i = 0; i < count; ++i)
        LibraryInitController::initDependency(dependencies[i].init, dependencies[i].deinit);
}

void VornParametersQt4Deinit()
{
    // The count before this deinit: a single init and deinit both log "(useCount: 1)".
    logLifecycle("DEINIT", LibraryInitController::useCount());
    LibraryInitController::deinit();
    vorn::core::unregisterLibraryResources();
}
}
