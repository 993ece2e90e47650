#include <vorn/lib/private/Logging.h>

#include <vorn/lib/private/InstallationRoot.h>
#include <vorn/platform/ReadWriteLockGuard.h>

namespace vorn {
namespace tools {
namespace logging {

using templates::platform::ReadWriteLockGuard;
namespace native = templates::platform::native;

namespace {

// The object the dispatcher's notifications go to: set while a dispatcher is registered with it.
std::atomic<Logging*> s_registered{nullptr};

} // namespace

Logging* Logging::get()
{
    return instance();
}

bool Logging::alive()
{
    return exists();
}

Logging::Logging() : m_defaultLogger(this, 0, Logger::kDefaultThreshold) {}

Logging::~Logging()
{
    releaseDispatcher();
}

void Logging::initialise()
{
    loadDispatcher(kDispatcherModuleName, nullptr);
}

native::Module* Logging::loadDispatcher(const char* baseName, const char* root)
{
    releaseDispatcher();
    if (!root)
        root = InstallationRoot::find();
    if (!root)
        return nullptr;

    m_modulePath = native::modulePathUnderRoot(root, baseName);
    m_loadErrorCode = 0;
    m_loadError.clear();
    native::Module* module = native::loadModule(m_modulePath.c_str(), &m_loadErrorCode, &m_loadError);
    if (!module)
        return nullptr;
    const auto* descriptor =
        static_cast<const logging_dispatcher_descriptor_t*>(native::moduleSymbol(module, kDescriptorSymbol));
    if (!descriptor || !descriptor->register_client) {
        // Not a dispatcher: let it go at once.
        native::freeModule(module);
        return nullptr;
    }

    m_module = module;
    s_registered.store(this);
    // Attached before registering, so that a dispatcher that detaches right away leaves us detached.
    m_descriptor.store(descriptor);
    descriptor->register_client(this, &Logging::onDetach, &Logging::onLevelChanged, &m_getLogger, &m_log);
    return module;
}

void Logging::releaseDispatcher()
{
    if (!m_module)
        return;
    const logging_dispatcher_descriptor_t* descriptor = m_descriptor.exchange(nullptr);
    // A dispatcher that detached has forgotten us already; one that did not must, before its code goes.
    if (descriptor && descriptor->unregister_client)
        descriptor->unregister_client(this);
    Logging* self = this;
    s_registered.compare_exchange_strong(self, nullptr);
    m_getLogger = nullptr;
    m_log = nullptr;
    native::freeModule(m_module);
    m_module = nullptr;
}

Logger& Logging::getLogger(const char* name)
{
    if (!m_descriptor.load() || !m_getLogger)
        return m_defaultLogger;
    logging_dispatcher_logger_id identity = 0;
    std::uint32_t threshold = Logger::kDefaultThreshold;
    m_getLogger(name, &identity, &threshold);

    ReadWriteLockGuard guard(&m_loggersLock, ReadWriteLockGuard::Write);
    auto& logger = m_loggers[identity];
    if (!logger)
        logger.reset(new Logger(this, identity, threshold));
    return *logger;
}

void Logging::dispatch(const Logger& logger, std::uint32_t level, const char* message, const char* file,
                       int line)
{
    if (!m_descriptor.load() || !m_log)
        return;
    m_log(logger.identity(), level, message, file, line);
}

void Logging::setLoggerThreshold(logging_dispatcher_logger_id identity, std::uint32_t threshold)
{
    // Read mode is enough: the map's structure does not change, and the threshold is atomic.
    ReadWriteLockGuard guard(&m_loggersLock, ReadWriteLockGuard::Read);
    const auto it = m_loggers.find(identity);
    if (it != m_loggers.end())
        it->second->setThreshold(threshold);
}

void Logging::detach()
{
    m_descriptor.store(nullptr);
}

void Logging::onDetach()
{
    if (Logging* logging = s_registered.load())
        logging->detach();
}

void Logging::onLevelChanged(logging_dispatcher_logger_id identity, std::uint32_t threshold)
{
    if (Logging* logging = s_registered.load())
        logging->setLoggerThreshold(identity, threshold);
}

} // namespace logging
} // namespace tools
} // namespace vorn
