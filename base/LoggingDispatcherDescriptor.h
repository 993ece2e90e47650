#pragma once

// The binary interface between a library that logs and the logging dispatcher module
// "common-logging-dispatcher", which the library loads at run time and enters through the data symbol
// "logging_dispatcher_descriptor". Plain C types only: the two sides may be built apart.

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

// A logger's identity as the dispatcher hands it out; never 0 for a logger the dispatcher knows.
typedef uintptr_t logging_dispatcher_logger_id;

// Dispatcher operations that the client receives at registration.
typedef void (*logging_dispatcher_get_logger_fn)(const char* name, logging_dispatcher_logger_id* id,
                                                 uint32_t* level);
typedef void (*logging_dispatcher_log_fn)(logging_dispatcher_logger_id id, uint32_t level,
                                          const char* message, const char* file, int line);

// Client notifications that the dispatcher may call at any time after registration: it is going away
// (the client stops using it), or a logger's threshold changed.
typedef void (*logging_dispatcher_detach_fn)(void);
typedef void (*logging_dispatcher_level_changed_fn)(logging_dispatcher_logger_id id, uint32_t level);

// Registers a client (an opaque pointer that names it) and writes the dispatcher's two operations into
// the client's slots.
typedef void (*logging_dispatcher_register_fn)(void* client, logging_dispatcher_detach_fn detach,
                                               logging_dispatcher_level_changed_fn levelChanged,
                                               logging_dispatcher_get_logger_fn* getLoggerSlot,
                                               logging_dispatcher_log_fn* logSlot);

struct logging_dispatcher_descriptor_t
{
    // Must stay the first field: every client relies on it.
    logging_dispatcher_register_fn register_client;
    // Forgets a client before it unloads the module, so that no notification reaches unloaded code.
    void (*unregister_client)(void* client);
    // Changes the threshold of the named logger (creating it if needed) and tells every client.
    void (*set_level)(const char* name, uint32_t level);
    // Tells every client that the dispatcher is going away and forgets them.
    void (*detach_clients)(void);
};

// What the dispatcher module exports, and all it exports. Clients look it up by this name when they
// load the module; none links against it.
extern const struct logging_dispatcher_descriptor_t logging_dispatcher_descriptor;

#ifdef __cplusplus
}
#endif
