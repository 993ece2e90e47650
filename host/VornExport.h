#pragma once

// Export and import decorations of the family libraries. On Windows each library exports its symbols
// while it is being built and imports them otherwise; elsewhere default visibility is enough.
#if defined(_WIN32)
#define VORN_DECL_EXPORT __declspec(dllexport)
#define VORN_DECL_IMPORT __declspec(dllimport)
#else
#define VORN_DECL_EXPORT __attribute__((visibility("default")))
#define VORN_DECL_IMPORT __attribute__((visibility("default")))
#endif

#if defined(VORN_CORE_BUILD)
#define VORN_CORE_API VORN_DECL_EXPORT
#else
#define VORN_CORE_API VORN_DECL_IMPORT
#endif

#if defined(VORN_PARAMETERS_BUILD)
#define VORN_PARAMETERS_API VORN_DECL_EXPORT
#else
#define VORN_PARAMETERS_API VORN_DECL_IMPORT
#endif

#if defined(VORN_MODELQT4_BUILD)
#define VORN_MODELQT4_API VORN_DECL_EXPORT
#else
#define VORN_MODELQT4_API VORN_DECL_IMPORT
#endif
