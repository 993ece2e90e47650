#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace vorn {
namespace templates {
namespace platform {

// Run-time loading of shared modules and the file name of this library's own module, with one
// implementation per platform (NativeModuleWindows.cpp, NativeModulePosix.cpp).
namespace native {

// The separator of the module paths the installation root is cut from.
#if defined(_WIN32)
constexpr char kPathSeparator = '\\';
#else
constexpr char kPathSeparator = '/';
#endif

struct Module;

// Loads the module at a path. On failure returns null and fills in the system's error code (0 where the
// system has none) and its text.
Module* loadModule(const char* path, std::uint32_t* errorCode, std::string* errorText);
void* moduleSymbol(Module* module, const char* name);
void freeModule(Module* module);

// Writes the full file name of the module this library is linked into (not the host's executable) into
// buffer and returns its length; 0 when the module cannot be had. A name that does not fit returns
// size, as the Windows call does, so that callers can tell a cut name from a whole one.
std::size_t ownModuleFileName(char* buffer, std::size_t size);

// The dispatcher module's path under an installation root, from the root and the module's base name.
std::string modulePathUnderRoot(const char* root, const char* baseName);

} // namespace native
} // namespace platform
} // namespace templates
} // namespace vorn
