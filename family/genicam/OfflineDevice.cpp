#include "family/genicam/OfflineDevice.h"

#include <arv.h>

#include <atomic>
#include <cstdint>
#include <cstring>
#include <memory>
#include <unordered_map>

namespace {

constexpr std::uint64_t kPageSize = 4096;

// What the device holds, in C++.
struct OfflineState
{
    std::string xml;
    ArvGc* genicam = nullptr;
    std::unordered_map<std::uint64_t, std::unique_ptr<std::uint8_t[]>> pages;
    // Register accesses as a camera would count them (one per read or write request), read by other
    // threads.
    std::atomic<std::uint64_t> reads{0};
    std::atomic<std::uint64_t> writes{0};

    std::uint8_t* page(std::uint64_t number, bool create)
    {
        auto it = pages.find(number);
        if (it != pages.end())
            return it->second.get();
        if (!create ||
            (pages.size() + 1) * kPageSize > vorn::core::models::genicam::OfflineDevice::kMaxMemory)
            return nullptr;
        std::unique_ptr<std::uint8_t[]> fresh(new std::uint8_t[kPageSize]());
        std::uint8_t* raw = fresh.get();
        pages.emplace(number, std::move(fresh));
        return raw;
    }
};

} // namespace

extern "C" {

struct VornOfflineDevice
{
    ArvDevice parent;
    OfflineState* state;
};

struct VornOfflineDeviceClass
{
    ArvDeviceClass parent_class;
};

GType vorn_offline_device_get_type();

G_DEFINE_TYPE(VornOfflineDevice, vorn_offline_device, ARV_TYPE_DEVICE)

static OfflineState* stateOf(ArvDevice* device)
{
    return reinterpret_cast<VornOfflineDevice*>(device)->state;
}

static void vorn_offline_device_init(VornOfflineDevice* self)
{
    self->state = new OfflineState();
}

static void vorn_offline_device_finalize(GObject* object)
{
    auto* self = reinterpret_cast<VornOfflineDevice*>(object);
    if (self->state->genicam)
        g_object_unref(self->state->genicam);
    delete self->state;
    self->state = nullptr;
    G_OBJECT_CLASS(vorn_offline_device_parent_class)->finalize(object);
}

static ArvStream* vorn_offline_device_create_stream(ArvDevice*, ArvStreamCallback, void*, GDestroyNotify,
                                                    GError** error)
{
    g_set_error(error, ARV_DEVICE_ERROR, ARV_DEVICE_ERROR_NO_STREAM_CHANNEL,
                "an offline description has no camera to stream images");
    return nullptr;
}

static const char* vorn_offline_device_get_genicam_xml(ArvDevice* device, size_t* size)
{
    OfflineState* state = stateOf(device);
    *size = state->xml.size();
    return state->xml.data();
}

static ArvGc* vorn_offline_device_get_genicam(ArvDevice* device)
{
    return stateOf(device)->genicam;
}

// Copies between the pages and buffer, page by page; false when a page is missing and create is off
// (nothing was written there: reads 0) or the memory is full.
static gboolean copyMemory(ArvDevice* device, guint64 address, guint32 size, void* buffer, bool write,
                           GError** error)
{
    OfflineState* state = stateOf(device);
    (write ? state->writes : state->reads).fetch_add(1, std::memory_order_relaxed);
    auto* bytes = static_cast<std::uint8_t*>(buffer);
    if (size > 0 && address + size - 1 < address) {
        g_set_error(error, ARV_DEVICE_ERROR, ARV_DEVICE_ERROR_PROTOCOL_ERROR_INVALID_ADDRESS,
                    "address 0x%" G_GINT64_MODIFIER "x (%u bytes) runs past the end of the address space",
                    address, size);
        return FALSE;
    }
    std::uint64_t done = 0;
    while (done < size) {
        const std::uint64_t at = address + done;
        const std::uint64_t offset = at % kPageSize;
        const std::uint64_t chunk = std::min<std::uint64_t>(kPageSize - offset, size - done);
        std::uint8_t* page = state->page(at / kPageSize, write);
        if (write) {
            if (!page) {
                g_set_error(error, ARV_DEVICE_ERROR, ARV_DEVICE_ERROR_PROTOCOL_ERROR_WRITE_PROTECT,
                            "the offline register memory is full (%zu bytes)",
                            vorn::core::models::genicam::OfflineDevice::kMaxMemory);
                return FALSE;
            }
            std::memcpy(page + offset, bytes + done, chunk);
        } else if (page) {
            std::memcpy(bytes + done, page + offset, chunk);
        } else {
            std::memset(bytes + done, 0, chunk);
        }
        done += chunk;
    }
    return TRUE;
}

static gboolean vorn_offline_device_read_memory(ArvDevice* device, guint64 address, guint32 size,
                                                void* buffer, GError** error)
{
    return copyMemory(device, address, size, buffer, false, error);
}

static gboolean vorn_offline_device_write_memory(ArvDevice* device, guint64 address, guint32 size,
                                                 void* buffer, GError** error)
{
    return copyMemory(device, address, size, buffer, true, error);
}

static gboolean vorn_offline_device_read_register(ArvDevice* device, guint64 address, guint32* value,
                                                  GError** error)
{
    guint32 raw = 0;
    if (!copyMemory(device, address, sizeof raw, &raw, false, error))
        return FALSE;
    *value = GUINT32_FROM_BE(raw);
    return TRUE;
}

static gboolean vorn_offline_device_write_register(ArvDevice* device, guint64 address, guint32 value,
                                                   GError** error)
{
    guint32 raw = GUINT32_TO_BE(value);
    return copyMemory(device, address, sizeof raw, &raw, true, error);
}

static void vorn_offline_device_class_init(VornOfflineDeviceClass* klass)
{
    G_OBJECT_CLASS(klass)->finalize = vorn_offline_device_finalize;
    ArvDeviceClass* device = ARV_DEVICE_CLASS(klass);
    device->create_stream = vorn_offline_device_create_stream;
    device->get_genicam_xml = vorn_offline_device_get_genicam_xml;
    device->get_genicam = vorn_offline_device_get_genicam;
    device->read_memory = vorn_offline_device_read_memory;
    device->write_memory = vorn_offline_device_write_memory;
    device->read_register = vorn_offline_device_read_register;
    device->write_register = vorn_offline_device_write_register;
}

} // extern "C"

namespace vorn {
namespace core {
namespace models {
namespace genicam {

ArvDevice* OfflineDevice::create(const std::string& xml, std::string* error)
{
    auto* device = static_cast<VornOfflineDevice*>(g_object_new(vorn_offline_device_get_type(), nullptr));
    device->state->xml = xml;
    device->state->genicam =
        arv_gc_new(ARV_DEVICE(device), device->state->xml.data(), device->state->xml.size());
    if (!device->state->genicam) {
        *error = "the GenICam library cannot read the description";
        g_object_unref(device);
        return nullptr;
    }
    return ARV_DEVICE(device);
}

ArvGc* OfflineDevice::genicamOf(ArvDevice* device)
{
    return stateOf(device)->genicam;
}

} // namespace genicam
} // namespace models
} // namespace core
} // namespace vorn

namespace vorn {
namespace core {
namespace models {
namespace genicam {

OfflineDevice::Traffic OfflineDevice::traffic(ArvDevice* device)
{
    if (!device || !G_TYPE_CHECK_INSTANCE_TYPE(device, vorn_offline_device_get_type()))
        return Traffic{};
    const OfflineState* state = stateOf(device);
    return Traffic{state->reads.load(std::memory_order_relaxed),
                   state->writes.load(std::memory_order_relaxed)};
}

} // namespace genicam
} // namespace models
} // namespace core
} // namespace vorn
