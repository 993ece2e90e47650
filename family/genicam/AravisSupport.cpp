#include "family/genicam/AravisSupport.h"

#include <arv.h>

namespace vorn {
namespace core {
namespace models {
namespace genicam {

std::mutex& aravisSystemMutex()
{
    static std::mutex mutex;
    return mutex;
}

namespace {

using ReadMemory = gboolean (*)(ArvDevice*, guint64, guint32, void*, GError**);
using WriteMemory = gboolean (*)(ArvDevice*, guint64, guint32, void*, GError**);
using ReadRegister = gboolean (*)(ArvDevice*, guint64, guint32*, GError**);
using WriteRegister = gboolean (*)(ArvDevice*, guint64, guint32, GError**);

ReadMemory g_readMemory = nullptr;
WriteMemory g_writeMemory = nullptr;
ReadRegister g_readRegister = nullptr;
WriteRegister g_writeRegister = nullptr;

bool insideMemory(guint64 address, guint64 size, GError** error)
{
    if (address < ARV_FAKE_CAMERA_MEMORY_SIZE && size <= ARV_FAKE_CAMERA_MEMORY_SIZE - address)
        return true;
    g_set_error(error, ARV_DEVICE_ERROR, ARV_DEVICE_ERROR_PROTOCOL_ERROR_INVALID_ADDRESS,
                "address 0x%llx (%llu bytes) is outside the simulated device's register memory (0x%x bytes)",
                static_cast<unsigned long long>(address), static_cast<unsigned long long>(size),
                static_cast<unsigned>(ARV_FAKE_CAMERA_MEMORY_SIZE));
    return false;
}

gboolean checkedReadMemory(ArvDevice* device, guint64 address, guint32 size, void* buffer, GError** error)
{
    return insideMemory(address, size, error) && g_readMemory(device, address, size, buffer, error);
}

gboolean checkedWriteMemory(ArvDevice* device, guint64 address, guint32 size, void* buffer, GError** error)
{
    return insideMemory(address, size, error) && g_writeMemory(device, address, size, buffer, error);
}

gboolean checkedReadRegister(ArvDevice* device, guint64 address, guint32* value, GError** error)
{
    return insideMemory(address, sizeof(guint32), error) && g_readRegister(device, address, value, error);
}

gboolean checkedWriteRegister(ArvDevice* device, guint64 address, guint32 value, GError** error)
{
    return insideMemory(address, sizeof(guint32), error) && g_writeRegister(device, address, value, error);
}

thread_local int t_quietDepth = 0;
thread_local std::string t_lastMessage;
GLogFunc g_previousHandler = nullptr;
gpointer g_previousData = nullptr;

void quietHandler(const gchar* domain, GLogLevelFlags level, const gchar* message, gpointer)
{
    if (t_quietDepth > 0) {
        t_lastMessage = message ? message : "";
        return;
    }
    if (g_previousHandler)
        g_previousHandler(domain, level, message, g_previousData);
    else
        g_log_default_handler(domain, level, message, nullptr);
}

} // namespace

void guardSimulatedDeviceMemory()
{
    static std::once_flag once;
    std::call_once(once, [] {
        // The class stays referenced for the life of the process: the patched table must outlive
        // every simulated device.
        auto* klass = static_cast<ArvDeviceClass*>(g_type_class_ref(ARV_TYPE_FAKE_DEVICE));
        g_readMemory = klass->read_memory;
        g_writeMemory = klass->write_memory;
        g_readRegister = klass->read_register;
        g_writeRegister = klass->write_register;
        klass->read_memory = checkedReadMemory;
        klass->write_memory = checkedWriteMemory;
        klass->read_register = checkedReadRegister;
        klass->write_register = checkedWriteRegister;
    });
}

AravisQuietScope::AravisQuietScope()
{
    static std::once_flag once;
    std::call_once(once, [] {
        // Messages of other threads go on to whoever handled them before.
        g_previousHandler = g_log_set_default_handler(quietHandler, nullptr);
        if (g_previousHandler == quietHandler)
            g_previousHandler = nullptr;
    });
    ++t_quietDepth;
}

AravisQuietScope::~AravisQuietScope()
{
    --t_quietDepth;
}

std::string AravisQuietScope::lastMessage()
{
    return t_lastMessage;
}

std::string reasonOf(const GError* error)
{
    std::string message = error && error->message ? error->message : "unknown error";
    while (!message.empty() && message[0] == '[') {
        const auto end = message.find("] ");
        if (end == std::string::npos)
            break;
        message.erase(0, end + 2);
    }
    return message;
}

} // namespace genicam
} // namespace models
} // namespace core
} // namespace vorn
