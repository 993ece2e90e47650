#pragma once

#include <vorn/base/LoggingDispatcherDescriptor.h>
#include <vorn/lib/private/Logger.h>
#include <vorn/platform/GuardedSingleton.h>
#include <vorn/platform/NativeModule.h>
#include <vorn/platform/ReadWriteLock.h>

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <string>

namespace vorn {
namespace tools {
namespace logging {

// The library's logging: it writes nothing itself but forwards records to the logging dispatcher
// module "common-logging-dispatcher", found under the installation root and loaded when this object is
// created. Without a dispatcher (none installed, none loadable, or detached by the dispatcher) every
// request is dropped quietly and every logger is the default one, whose threshold disables everything
// the library logs, so that no message is even formatted.
//
// Created on first use, destroyed (unloading the dispatcher) at the library's last deinit.
class Logging : public GuardedSingleton<Logging>
{
public:
    static constexpr const char* kDispatcherModuleName = "common-logging-dispatcher";
    static constexpr const char* kDescriptorSymbol = "logging_dispatcher_descriptor";

    // The process-wide instance, created on first use. Other modules reach it through this accessor
    // rather than instance(), so that they share this module's object.
    static Logging* get();
    // Whether the instance exists now.
    static bool alive();

    // The named logger: the default logger while no dispatcher is attached.
    Logger& getLogger(const char* name);
    Logger& defaultLogger() { return m_defaultLogger; }

    // Loads the dispatcher module by base name from the installation root (null: look the root up) and
    // attaches it. Returns the module, or null when there is no root, the module does not load, or it
    // lacks the descriptor (then it is unloaded again). A dispatcher attached before is let go first.
    // Meant for creation time, before other threads use the object.
    templates::platform::native::Module* loadDispatcher(const char* baseName, const char* root);

    bool attached() const { return m_descriptor.load() != nullptr; }
    const logging_dispatcher_descriptor_t* descriptor() const { return m_descriptor.load(); }
    const std::string& dispatcherPath() const { return m_modulePath; }
    std::uint32_t lastLoadErrorCode() const { return m_loadErrorCode; }
    const std::string& lastLoadError() const { return m_loadError; }

    // Hands a record of logger to the dispatcher, or drops it when none is attached.
    void dispatch(const Logger& logger, std::uint32_t level, const char* message, const char* file, int line);

protected:
    // Loads the dispatcher once the object is whole.
    void initialise() override;

private:
    friend class GuardedSingleton<Logging>;
    Logging();
    ~Logging() override;

    void releaseDispatcher();
    void setLoggerThreshold(logging_dispatcher_logger_id identity, std::uint32_t threshold);
    void detach();

    // The notifications the dispatcher calls; they reach the attached object through a module-wide
    // pointer, as they carry no object.
    static void onDetach();
    static void onLevelChanged(logging_dispatcher_logger_id identity, std::uint32_t threshold);

    templates::platform::native::Module* m_module = nullptr;
    std::string m_modulePath;
    std::uint32_t m_loadErrorCode = 0;
    std::string m_loadError;
    // Non-null means attached; cleared when the dispatcher detaches, from whatever thread it does.
    std::atomic<const logging_dispatcher_descriptor_t*> m_descriptor{nullptr};
    // Written by the dispatcher at registration.
    logging_dispatcher_get_logger_fn m_getLogger = nullptr;
    logging_dispatcher_log_fn m_log = nullptr;

    templates::platform::ReadWriteLock m_loggersLock;
    std::map<logging_dispatcher_logger_id, std::unique_ptr<Logger>> m_loggers;
    Logger m_defaultLogger;
};

} // namespace logging
} // namespace tools
} // namespace vorn
