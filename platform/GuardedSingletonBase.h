#pragma once

// What the library's LibraryInitController needs of a process-wide singleton in order to destroy it at
// the library's last deinit. The order of the virtual operations is part of the contract between
// modules (a singleton may live in another module than the controller), so keep it:
//   1. tearDown                  - called first, while the object is still whole;
//   2. instancePointerAddress    - the module-wide pointer to null once the object is gone;
//   3. the destructor;
//   4. initialise                - run once by the creator right after construction.
class GuardedSingletonBase
{
public:
    // Where a new singleton is taken into its module's teardown. The module's lifecycle (its init
    // controller) installs itself here when the module is loaded; without a registrar a singleton lives
    // until the process ends.
    using Registrar = void (*)(GuardedSingletonBase* singleton);
    static void setRegistrar(Registrar registrar);
    // Hands a just-created singleton to the registrar, if there is one.
    static void registerCreated(GuardedSingletonBase* singleton);

    virtual void tearDown();
    virtual GuardedSingletonBase** instancePointerAddress() = 0;
    virtual ~GuardedSingletonBase();
    virtual void initialise();

protected:
    GuardedSingletonBase() = default;
    GuardedSingletonBase(const GuardedSingletonBase&) = delete;
    GuardedSingletonBase& operator=(const GuardedSingletonBase&) = delete;
};
