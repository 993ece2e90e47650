#include <vorn/host/VornCore.h>

#include "family/common/UseCount.h"

namespace {
vorn::family::UseCount g_useCount;
}

extern "C" {

void VornCoreInit()
{
    g_useCount.init();
}

void VornCoreDeinit()
{
    g_useCount.deinit();
}

unsigned VornCoreUseCount()
{
    return g_useCount.count();
}

unsigned long long VornCoreInitCalls()
{
    return g_useCount.inits();
}

unsigned long long VornCoreDeinitCalls()
{
    return g_useCount.deinits();
}
}
