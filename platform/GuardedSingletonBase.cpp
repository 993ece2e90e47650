#include <vorn/platform/GuardedSingletonBase.h>

#include <atomic>

namespace {

// Constant-initialised, so that it is null before any static initialiser of the module runs.
std::atomic<GuardedSingletonBase::Registrar> s_registrar{nullptr};

} // namespace

void GuardedSingletonBase::setRegistrar(Registrar registrar)
{
    s_registrar.store(registrar);
}

void GuardedSingletonBase::registerCreated(GuardedSingletonBase* singleton)
{
    if (const Registrar registrar = s_registrar.load())
        registrar(singleton);
}

void GuardedSingletonBase::tearDown() {}

GuardedSingletonBase::~GuardedSingletonBase() = default;

void GuardedSingletonBase::initialise() {}
