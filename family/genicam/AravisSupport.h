#pragma once

// What every use of Aravis in this backend shares: the lock around Aravis's process-wide state, the
// guard that keeps the simulated device inside its register memory, and the scope that keeps
// Aravis's and libxml's diagnostics off the terminal.

#include <mutex>
#include <string>

typedef struct _GError GError;

namespace vorn {
namespace core {
namespace models {
namespace genicam {

// Aravis's device list, interfaces and the simulated camera's description file name are
// process-wide and unguarded; every use of them takes this lock.
std::mutex& aravisSystemMutex();

// Aravis's simulated device copies register memory without checking the address: a description
// with a register beyond the memory would crash the process. Once installed, reads and writes
// outside the memory fail with an error instead. Idempotent.
void guardSimulatedDeviceMemory();

// While one lives on a thread, GLib messages that Aravis logs on that thread (assertions about odd
// descriptions, parser complaints) are kept instead of printed. Nests.
class AravisQuietScope
{
public:
    AravisQuietScope();
    ~AravisQuietScope();
    AravisQuietScope(const AravisQuietScope&) = delete;
    AravisQuietScope& operator=(const AravisQuietScope&) = delete;

    // The last message kept on this thread, empty when none.
    static std::string lastMessage();
};

// An Aravis error's message without the names of the nodes it went through ("[Width] [WidthReg] ..."):
// our own messages name the feature already.
std::string reasonOf(const GError* error);

} // namespace genicam
} // namespace models
} // namespace core
} // namespace vorn
