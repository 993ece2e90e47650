#pragma once

#include <vorn/base/VornExport.h>

// Entry points of the core library. Every init must be matched by one deinit; the library keeps its
// own use count, which tests and hosts can read.
extern "C" {
VORN_CORE_API void VornCoreInit();
VORN_CORE_API void VornCoreDeinit();
VORN_CORE_API unsigned VornCoreUseCount();
// Number of init and deinit calls since the library was loaded (for balance checks).
VORN_CORE_API unsigned long long VornCoreInitCalls();
VORN_CORE_API unsigned long long VornCoreDeinitCalls();
}
