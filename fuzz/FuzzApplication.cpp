// Every fuzz target runs inside one application on the offscreen platform, made before the first input.
#include "FuzzSupport.h"

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    vorn::fuzz::startApplication(argc, argv);
    return 0;
}
