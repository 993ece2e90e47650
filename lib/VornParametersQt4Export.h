#pragma once

#include "host/VornExport.h"

#if defined(VORN_PARAMETERSQT4_BUILD)
#define VORN_PARAMETERSQT4_API VORN_DECL_EXPORT
#else
#define VORN_PARAMETERSQT4_API VORN_DECL_IMPORT
#endif
