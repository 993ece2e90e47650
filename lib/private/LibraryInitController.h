#pragma once

#include <cstdint>
#include <forward_list>

class GuardedSingletonBase;

// The library's lifecycle: a process-wide use count, the dependency libraries' deinit functions to call
// at the last deinit, and the guarded singletons to destroy then. There is one controller state per
// library module; the instance that holds the two lists lives from the use count's step from 0 to 1 to
// its step back to 0.
//
// Every operation except useCount() runs under one re-entrant spin lock, held through the dependency
// inits and the whole teardown: a thread that calls in meanwhile spins until they are done, while the
// holding thread may come back in (a dependency's init, or a singleton created inside the locked region
// registering itself).
class LibraryInitController
{
public:
    using Function = void (*)();

    // Raises the use count; creates the instance when the count becomes 1.
    static void init();
    // Remembers deinit for the last deinit (only while an instance exists), then calls init.
    static void initDependency(Function init, Function deinit);
    // Takes a just-created singleton into the teardown (only while an instance exists; otherwise the
    // singleton lives until the process ends).
    static void registerSingleton(GuardedSingletonBase* singleton);
    // Lowers the use count; at 0 calls the remembered deinit functions and destroys the singletons,
    // most recent first, then the instance. The count is not clamped: a deinit at 0 wraps it.
    static void deinit();
    // Read without the lock: a snapshot.
    static std::uint32_t useCount();
    // Whether an instance exists now; read without the lock, a snapshot like useCount().
    static bool hasInstance();

private:
    LibraryInitController() = default;
    ~LibraryInitController() = default;
    LibraryInitController(const LibraryInitController&) = delete;
    LibraryInitController& operator=(const LibraryInitController&) = delete;

    void tearDown();

    // Both lists insert at the front, so walking them gives the most recent entry first.
    std::forward_list<GuardedSingletonBase*> m_singletons;
    std::forward_list<Function> m_deinitialisers;
};
