#pragma once

#include <vorn/base/VornExport.h>

// The library's entry points. A host calls VornParametersQt4Init before it creates any model, node,
// delegate or editor of this library, and VornParametersQt4Deinit once for every earlier init; the
// calls may come from any thread. They return nothing, and nothing in them reports a failure.
extern "C" {
VORN_PARAMETERSQT4_API void VornParametersQt4Init();
VORN_PARAMETERSQT4_API void VornParametersQt4Deinit();
}
