#pragma once

#include <vorn/base/VornExport.h>

// Entry points of the parameter library, with its use count for tests and hosts.
extern "C" {
VORN_PARAMETERS_API void VornParametersInit();
VORN_PARAMETERS_API void VornParametersDeinit();
VORN_PARAMETERS_API unsigned VornParametersUseCount();
VORN_PARAMETERS_API unsigned long long VornParametersInitCalls();
VORN_PARAMETERS_API unsigned long long VornParametersDeinitCalls();
}
