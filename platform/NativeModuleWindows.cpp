// Module loading on Windows: LoadLibraryA, GetProcAddress and FreeLibrary; the library's own file name
// from the module that holds an address inside it. Modules live in ROOT\bin as NAME.dll.
#include <vorn/platform/NativeModule.h>

#include <vorn/base/WindowsApi.h>

#include <cstdio>

namespace vorn {
namespace templates {
namespace platform {
namespace native {

Module* loadModule(const char* path, std::uint32_t* errorCode, std::string* errorText)
{
    HMODULE module = LoadLibraryA(path);
    if (module)
        return reinterpret_cast<Module*>(module);
    const DWORD error = GetLastError();
    *errorCode = static_cast<std::uint32_t>(error);
    char text[512] = {};
    const DWORD length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                        error, 0, text, sizeof text, nullptr);
    *errorText = length > 0 ? std::string(text, length) : "error " + std::to_string(error);
    return nullptr;
}

void* moduleSymbol(Module* module, const char* name)
{
    return reinterpret_cast<void*>(GetProcAddress(reinterpret_cast<HMODULE>(module), name));
}

void freeModule(Module* module)
{
    FreeLibrary(reinterpret_cast<HMODULE>(module));
}

std::size_t ownModuleFileName(char* buffer, std::size_t size)
{
    HMODULE self = nullptr;
    if (!GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            reinterpret_cast<LPCSTR>(&ownModuleFileName), &self))
        return 0;
    return GetModuleFileNameA(self, buffer, static_cast<DWORD>(size));
}

std::string modulePathUnderRoot(const char* root, const char* baseName)
{
    const int length = std::snprintf(nullptr, 0, "%s\\bin\\%s.dll", root, baseName);
    std::string path(static_cast<std::size_t>(length > 0 ? length : 0), '\0');
    std::snprintf(&path[0], path.size() + 1, "%s\\bin\\%s.dll", root, baseName);
    return path;
}

} // namespace native
} // namespace platform
} // namespace templates
} // namespace vorn
