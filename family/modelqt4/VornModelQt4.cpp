#include <vorn/host/VornModelQt4.h>

#if !defined(VORN_FRAME_ONLY)
#include <vorn/host/Qt4AbstractModelNode.h>
#endif

#include "family/common/UseCount.h"

namespace {
vorn::family::UseCount g_useCount;
}

extern "C" {

void VornModelQt4Init()
{
#if !defined(VORN_FRAME_ONLY)
    // Views find row nodes through this meta type; register it before any model answers.
    qRegisterMetaType<vorn::core::Qt4AbstractModelNodePtr>("vorn::core::Qt4AbstractModelNodePtr");
#endif
    g_useCount.init();
}

void VornModelQt4Deinit()
{
    g_useCount.deinit();
}

unsigned VornModelQt4UseCount()
{
    return g_useCount.count();
}

unsigned long long VornModelQt4InitCalls()
{
    return g_useCount.inits();
}

unsigned long long VornModelQt4DeinitCalls()
{
    return g_useCount.deinits();
}
}
