// A loadable module that is not a logging dispatcher: it exports a function, but not the descriptor.
#include <vorn/base/VornExport.h>

extern "C" VORN_DECL_EXPORT int vorn_not_a_dispatcher()
{
    return 1;
}
