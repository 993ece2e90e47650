#pragma once

#include <vorn/base/VornExport.h>

// Entry points of the generic Qt model library, with its use count for tests and hosts.
extern "C" {
VORN_MODELQT4_API void VornModelQt4Init();
VORN_MODELQT4_API void VornModelQt4Deinit();
VORN_MODELQT4_API unsigned VornModelQt4UseCount();
VORN_MODELQT4_API unsigned long long VornModelQt4InitCalls();
VORN_MODELQT4_API unsigned long long VornModelQt4DeinitCalls();
}
