#pragma once

// Export and import decorations of every library of the project. Each library exports its symbols
// while it is being built (VORN_<LIBRARY>_BUILD) and imports them otherwise. The libraries are built
// with hidden visibility, so that only what carries one of these macros is part of a library's
// interface, on every platform alike.
// VORN_DECL_HIDDEN keeps a class nested in an exported one (a private implementation) out of the
// interface: it would otherwise take the enclosing class's visibility. A DLL exports only what is
// marked, so on Windows there is nothing to keep out.
#if defined(_WIN32)
#define VORN_DECL_EXPORT __declspec(dllexport)
#define VORN_DECL_IMPORT __declspec(dllimport)
#define VORN_DECL_HIDDEN
#else
#define VORN_DECL_EXPORT __attribute__((visibility("default")))
#define VORN_DECL_IMPORT __attribute__((visibility("default")))
#define VORN_DECL_HIDDEN __attribute__((visibility("hidden")))
#endif

// The core library: generic model nodes and the host application's settings.
#if defined(VORN_CORE_BUILD)
#define VORN_CORE_API VORN_DECL_EXPORT
#else
#define VORN_CORE_API VORN_DECL_IMPORT
#endif

// The parameter library: parameter nodes, their kinds and the in-memory tree.
#if defined(VORN_PARAMETERS_BUILD)
#define VORN_PARAMETERS_API VORN_DECL_EXPORT
#else
#define VORN_PARAMETERS_API VORN_DECL_IMPORT
#endif

// The generic Qt model library: item models over generic model nodes, and their tree view.
#if defined(VORN_MODELQT4_BUILD)
#define VORN_MODELQT4_API VORN_DECL_EXPORT
#else
#define VORN_MODELQT4_API VORN_DECL_IMPORT
#endif

// The GenICam backend of the parameter library.
#if defined(VORN_GENICAM_BUILD)
#define VORN_GENICAM_API VORN_DECL_EXPORT
#else
#define VORN_GENICAM_API VORN_DECL_IMPORT
#endif

// The parameter tree library itself: entry points, models, delegate and editors.
#if defined(VORN_PARAMETERSQT4_BUILD)
#define VORN_PARAMETERSQT4_API VORN_DECL_EXPORT
#else
#define VORN_PARAMETERSQT4_API VORN_DECL_IMPORT
#endif
