#include <vorn/host/VornParameters.h>

#include "family/common/UseCount.h"

namespace {
vorn::family::UseCount g_useCount;
}

extern "C" {

void VornParametersInit()
{
    g_useCount.init();
}

void VornParametersDeinit()
{
    g_useCount.deinit();
}

unsigned VornParametersUseCount()
{
    return g_useCount.count();
}

unsigned long long VornParametersInitCalls()
{
    return g_useCount.inits();
}

unsigned long long VornParametersDeinitCalls()
{
    return g_useCount.deinits();
}
}
