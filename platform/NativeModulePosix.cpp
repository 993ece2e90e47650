// Module loading on POSIX systems: dlopen, dlsym and dlclose; the library's own file name from dladdr on
// an address inside it. Modules live in ROOT/lib as libNAME.so.
#include <vorn/platform/NativeModule.h>

#include <dlfcn.h>

#include <cstdio>
#include <cstring>

namespace vorn {
namespace templates {
namespace platform {
namespace native {

Module* loadModule(const char* path, std::uint32_t* errorCode, std::string* errorText)
{
    void* module = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    if (module)
        return static_cast<Module*>(module);
    const char* error = dlerror();
    *errorCode = 0; // dlopen reports only a text
    *errorText = error ? error : "cannot load " + std::string(path);
    return nullptr;
}

void* moduleSymbol(Module* module, const char* name)
{
    return dlsym(module, name);
}

void freeModule(Module* module)
{
    dlclose(module);
}

std::size_t ownModuleFileName(char* buffer, std::size_t size)
{
    Dl_info info;
    if (!dladdr(reinterpret_cast<void*>(&ownModuleFileName), &info) || !info.dli_fname || size == 0)
        return 0;
    const std::size_t length = std::strlen(info.dli_fname);
    if (length >= size) {
        std::memcpy(buffer, info.dli_fname, size - 1);
        buffer[size - 1] = '\0';
        return size;
    }
    std::memcpy(buffer, info.dli_fname, length + 1);
    return length;
}

std::string modulePathUnderRoot(const char* root, const char* baseName)
{
    const int length = std::snprintf(nullptr, 0, "%s/lib/lib%s.so", root, baseName);
    std::string path(static_cast<std::size_t>(length > 0 ? length : 0), '\0');
    std::snprintf(&path[0], path.size() + 1, "%s/lib/lib%s.so", root, baseName);
    return path;
}

} // namespace native
} // namespace platform
} // namespace templates
} // namespace vorn
