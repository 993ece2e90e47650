#pragma once

// The Windows API without the macros that would clash with the standard library (min, max) and
// without its rarely used parts. Nothing elsewhere.
#if defined(_WIN32)
#define WIN32_LEAN_AND_MEAN
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#endif
