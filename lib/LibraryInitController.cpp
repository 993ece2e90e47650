#include <vorn/lib/private/LibraryInitController.h>

#include <vorn/lib/private/LibraryInitControllerInternal.h>
#include <vorn/platform/GuardedSingletonBase.h>
#include <vorn/platform/SpinLockVariableGuard.h>

#include <atomic>
#include <iostream>

using vorn::templates::platform::LockWord;
using vorn::templates::platform::SpinLockVariableGuard;
using vorn::templates::platform::ThreadId;

namespace {

// Module-wide state, static and zero at load. The count and the instance pointer are written only under
// the lock but read without it (useCount(), the log lines), hence atomic.
std::atomic<std::uint32_t> s_useCount{0};
std::atomic<LibraryInitController*> s_instance{nullptr};
volatile LockWord s_lockWord = 0;
volatile ThreadId s_lockOwner = 0;
// The trace switch: compiled in as off; nothing in the library turns it on.
std::atomic<bool> s_trace{false};

// The library's guarded singletons are made in platform/, which knows nothing of this controller: the
// controller takes them into its teardown as the registrar of every singleton the module creates.
struct RegistrarInstaller
{
    RegistrarInstaller() { GuardedSingletonBase::setRegistrar(&LibraryInitController::registerSingleton); }
} s_registrarInstaller;

} // namespace

namespace vorn {
namespace core {

void setLibraryInitTrace(bool on)
{
    s_trace.store(on);
}

bool libraryInitTrace()
{
    return s_trace.load();
}

} // namespace core
} // namespace vorn

void LibraryInitController::init()
{
    SpinLockVariableGuard guard(&s_lockWord, &s_lockOwner);
    const std::uint32_t count = s_useCount.load() + 1;
    s_useCount.store(count);
    if (count == 1) {
        s_instance.store(new LibraryInitController());
        if (s_trace.load())
            std::cout << "LibraryInitController [Create ] - Instance: "
                      << static_cast<void*>(s_instance.load()) << std::endl;
    }
    if (s_trace.load())
        std::cout << "LibraryInitController [Init   ] - Instance: " << static_cast<void*>(s_instance.load())
                  << " - Use Count: " << count << std::endl;
}

void LibraryInitController::initDependency(Function init, Function deinit)
{
    SpinLockVariableGuard guard(&s_lockWord, &s_lockOwner);
    if (LibraryInitController* instance = s_instance.load())
        instance->m_deinitialisers.push_front(deinit);
    // Still under the lock, which is re-entrant: the dependency may call back into the controller.
    init();
}

void LibraryInitController::registerSingleton(GuardedSingletonBase* singleton)
{
    SpinLockVariableGuard guard(&s_lockWord, &s_lockOwner);
    if (LibraryInitController* instance = s_instance.load())
        instance->m_singletons.push_front(singleton);
}

void LibraryInitController::deinit()
{
    SpinLockVariableGuard guard(&s_lockWord, &s_lockOwner);
    const std::uint32_t before = s_useCount.load();
    if (s_trace.load())
        std::cout << "LibraryInitController [Deinit ] - Instance: " << static_cast<void*>(s_instance.load())
                  << " - Use Count: " << static_cast<std::uint32_t>(before - 1) << std::endl;
    // Unsigned arithmetic: a deinit without an init wraps to 4294967295 and tears nothing down.
    const std::uint32_t count = before - 1;
    s_useCount.store(count);
    if (count != 0)
        return;
    LibraryInitController* instance = s_instance.load();
    if (!instance)
        return;
    instance->tearDown();
    if (s_trace.load())
        std::cout << "LibraryInitController [Destroy] - Instance: " << static_cast<void*>(instance)
                  << std::endl;
    delete instance;
    s_instance.store(nullptr);
}

std::uint32_t LibraryInitController::useCount()
{
    return s_useCount.load();
}

bool LibraryInitController::hasInstance()
{
    return s_instance.load() != nullptr;
}

void LibraryInitController::tearDown()
{
    // Most recent first: the dependencies in the reverse of their init order, every copy remembered by
    // every init, so each dependency sees as many deinits as it saw inits.
    for (Function deinit : m_deinitialisers)
        deinit();
    m_deinitialisers.clear();
    for (GuardedSingletonBase* singleton : m_singletons) {
        singleton->tearDown();
        GuardedSingletonBase** pointer = singleton->instancePointerAddress();
        delete singleton;
        // Nulled only now, so that the next use after a later init creates a fresh singleton.
        *pointer = nullptr;
    }
    m_singletons.clear();
}
