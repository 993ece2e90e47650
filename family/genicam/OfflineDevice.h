#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

typedef struct _ArvDevice ArvDevice;
typedef struct _ArvGc ArvGc;

namespace vorn {
namespace core {
namespace models {
namespace genicam {

// A device for a description without its camera: register memory that answers at every address (a
// register nobody wrote reads 0), and the description, which the GenICam library parses from memory.
// Vendors put registers anywhere in the address space, so the memory is kept in pages and only what is
// written takes room, up to kMaxMemory; beyond it a write fails with a clear error.
class OfflineDevice
{
public:
    static constexpr std::size_t kMaxMemory = 64u << 20;

    // The device (a GObject the caller owns) and its GenICam document, made from xml; nullptr with the
    // reason when the GenICam library cannot make a document of it.
    static ArvDevice* create(const std::string& xml, std::string* error);
    // Its document, owned by the device.
    static ArvGc* genicamOf(ArvDevice* device);

    // The register reads and writes the device has answered so far (zeros for another device); safe
    // from any thread while the device lives.
    struct Traffic
    {
        std::uint64_t reads = 0;
        std::uint64_t writes = 0;
    };
    static Traffic traffic(ArvDevice* device);
};

} // namespace genicam
} // namespace models
} // namespace core
} // namespace vorn
