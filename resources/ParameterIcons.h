#pragma once

#include "lib/VornParametersQt4Export.h"

// The type icons under ":/parameters/" (string, float, enumeration, command, boolean, integer).
//
// The collection registers itself when the library is loaded and unregisters when it is unloaded.
// The library's entry points register it again on initialisation and remove it on
// de-initialisation. Qt keeps a collection only once however often it is registered and drops it at
// the first removal, so the icons are available from load until the first de-initialisation and
// again after every later initialisation.

// Registers the icon collection with Qt's resource system. Returns 1.
VORN_PARAMETERSQT4_API int vornInitParameterIcons();

// Removes the icon collection from Qt's resource system. Returns 1.
VORN_PARAMETERSQT4_API int vornCleanupParameterIcons();
