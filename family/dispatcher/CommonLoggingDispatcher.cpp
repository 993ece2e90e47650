#include "family/dispatcher/CommonLoggingDispatcher.h"

#include "family/dispatcher/DispatcherConfiguration.h"
#include "family/dispatcher/DispatcherOutput.h"
#include <vorn/base/VornExport.h>

#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

#if defined(_WIN32)
#include <vorn/base/WindowsApi.h>
#else
#include <dlfcn.h>
#endif

namespace vorn {
namespace dispatcher {

namespace {

#if defined(_WIN32)
const char kSeparator = '\\';
const char kConfigurationFile[] = "\\etc\\common-logging-dispatcher.conf";
#else
const char kSeparator = '/';
const char kConfigurationFile[] = "/etc/common-logging-dispatcher.conf";
#endif

// The file name of this module, to find the configuration next to the installation.
std::string ownModulePath()
{
#if defined(_WIN32)
    HMODULE self = nullptr;
    char path[1024];
    if (!GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            reinterpret_cast<LPCSTR>(&ownModulePath), &self))
        return std::string();
    const DWORD length = GetModuleFileNameA(self, path, sizeof path);
    return length > 0 && length < sizeof path ? std::string(path, length) : std::string();
#else
    Dl_info info;
    if (!dladdr(reinterpret_cast<void*>(&ownModulePath), &info) || !info.dli_fname)
        return std::string();
    return info.dli_fname;
#endif
}

// ROOT for ROOT/lib/libcommon-logging-dispatcher.so (ROOT\bin\common-logging-dispatcher.dll).
std::string installationRoot()
{
    std::string path = ownModulePath();
    for (int cut = 0; cut < 2; ++cut) {
        const std::size_t separator = path.rfind(kSeparator);
        if (separator == std::string::npos)
            return std::string();
        path.erase(separator);
    }
    return path;
}

struct Client
{
    void* client;
    logging_dispatcher_detach_fn detach;
    logging_dispatcher_level_changed_fn levelChanged;
};

struct LoggerEntry
{
    LoggerEntry(const std::string& name, std::uint32_t level) : name(name), level(level) {}
    const std::string name;
    std::atomic<std::uint32_t> level;
};

// The dispatcher's state, one per process (per loaded module).
class Dispatcher
{
public:
    static Dispatcher& get()
    {
        static Dispatcher dispatcher;
        return dispatcher;
    }

    void registerClient(const Client& client)
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        configure();
        m_clients.push_back(client);
    }

    void unregisterClient(void* client)
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        for (auto it = m_clients.begin(); it != m_clients.end(); ++it) {
            if (it->client == client) {
                m_clients.erase(it);
                return;
            }
        }
    }

    void getLogger(const char* name, logging_dispatcher_logger_id* id, std::uint32_t* level)
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        configure();
        LoggerEntry& entry = entryFor(name ? name : "");
        *id = m_byName[entry.name];
        *level = entry.level.load();
    }

    void log(logging_dispatcher_logger_id id, std::uint32_t level, const char* message, const char* file,
             int line)
    {
        LoggerEntry* entry = nullptr;
        {
            std::lock_guard<std::mutex> lock(m_mutex);
            if (id == 0 || id > m_loggers.size())
                return;
            entry = m_loggers[id - 1].get();
        }
        // Entries live as long as the dispatcher, so the record is written outside the lock.
        if (level < entry->level.load())
            return;
        m_output.write(entry->name, level, message, file, line);
    }

    void setLevel(const char* name, std::uint32_t level)
    {
        std::vector<Client> clients;
        logging_dispatcher_logger_id id = 0;
        {
            std::lock_guard<std::mutex> lock(m_mutex);
            configure();
            m_configuration.setLevel(name ? name : "", level);
            LoggerEntry& entry = entryFor(name ? name : "");
            entry.level.store(level);
            id = m_byName[entry.name];
            clients = m_clients;
        }
        // Outside the lock: a client may ask for loggers while it handles the change.
        for (const Client& client : clients) {
            if (client.levelChanged)
                client.levelChanged(id, level);
        }
    }

    void detachClients()
    {
        std::vector<Client> clients;
        {
            std::lock_guard<std::mutex> lock(m_mutex);
            clients.swap(m_clients);
        }
        for (const Client& client : clients) {
            if (client.detach)
                client.detach();
        }
    }

private:
    Dispatcher() = default;

    // Reads the configuration once, when it is first needed (under m_mutex).
    void configure()
    {
        if (m_configured)
            return;
        m_configured = true;
        const std::string root = installationRoot();
        m_configuration =
            DispatcherConfiguration::load(root.empty() ? std::string() : root + kConfigurationFile);
        m_output.open(m_configuration.output());
    }

    // The entry of a logger name, created with its configured level on first use (under m_mutex).
    LoggerEntry& entryFor(const std::string& name)
    {
        const auto it = m_byName.find(name);
        if (it != m_byName.end())
            return *m_loggers[it->second - 1];
        m_loggers.emplace_back(new LoggerEntry(name, m_configuration.levelFor(name)));
        m_byName[name] = m_loggers.size();
        return *m_loggers.back();
    }

    std::mutex m_mutex;
    bool m_configured = false;
    DispatcherConfiguration m_configuration;
    // A logger's identity is its position here plus one, so 0 is never handed out.
    std::vector<std::unique_ptr<LoggerEntry>> m_loggers;
    std::map<std::string, logging_dispatcher_logger_id> m_byName;
    std::vector<Client> m_clients;
    DispatcherOutput m_output;
};

void getLogger(const char* name, logging_dispatcher_logger_id* id, std::uint32_t* level)
{
    Dispatcher::get().getLogger(name, id, level);
}

void log(logging_dispatcher_logger_id id, std::uint32_t level, const char* message, const char* file,
         int line)
{
    Dispatcher::get().log(id, level, message, file, line);
}

void registerClient(void* client, logging_dispatcher_detach_fn detach,
                    logging_dispatcher_level_changed_fn levelChanged,
                    logging_dispatcher_get_logger_fn* getLoggerSlot, logging_dispatcher_log_fn* logSlot)
{
    Dispatcher::get().registerClient(Client{client, detach, levelChanged});
    if (getLoggerSlot)
        *getLoggerSlot = &getLogger;
    if (logSlot)
        *logSlot = &log;
}

void unregisterClient(void* client)
{
    Dispatcher::get().unregisterClient(client);
}

void setLevel(const char* name, std::uint32_t level)
{
    Dispatcher::get().setLevel(name, level);
}

void detachClients()
{
    Dispatcher::get().detachClients();
}

} // namespace

} // namespace dispatcher
} // namespace vorn

extern "C" VORN_DECL_EXPORT const logging_dispatcher_descriptor_t logging_dispatcher_descriptor = {
    &vorn::dispatcher::registerClient,
    &vorn::dispatcher::unregisterClient,
    &vorn::dispatcher::setLevel,
    &vorn::dispatcher::detachClients,
};
