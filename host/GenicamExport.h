#pragma once

#include "host/VornExport.h"

// Export and import decoration of the GenICam backend library.
#if defined(VORN_GENICAM_BUILD)
#define VORN_GENICAM_API VORN_DECL_EXPORT
#else
#define VORN_GENICAM_API VORN_DECL_IMPORT
#endif
