// A minimal host of the library: loads it from a path at run time, calls VornParametersQt4Init and
// VornParametersQt4Deinit once each, and writes the calling thread's id to a file.
//
//     vorn_lifecycle_host LIBRARY THREAD-ID-FILE [NAME=VALUE ...]
//
// The NAME=VALUE arguments are set in the environment before the library is loaded (an empty value
// removes the variable), so that a test controls what the library and its dispatcher see.
#include <cstdio>
#include <cstdlib>
#include <string>

#if defined(_WIN32)
#include <vorn/base/WindowsApi.h>
#else
#include <dlfcn.h>
#include <sys/syscall.h>
#include <unistd.h>
#endif

namespace {

void setVariable(const std::string& assignment)
{
    const std::size_t equals = assignment.find('=');
    if (equals == std::string::npos)
        return;
    const std::string name = assignment.substr(0, equals);
    const std::string value = assignment.substr(equals + 1);
#if defined(_WIN32)
    _putenv_s(name.c_str(), value.c_str());
#else
    if (value.empty())
        unsetenv(name.c_str());
    else
        setenv(name.c_str(), value.c_str(), 1);
#endif
}

unsigned long threadId()
{
#if defined(_WIN32)
    return GetCurrentThreadId();
#else
    return static_cast<unsigned long>(syscall(SYS_gettid));
#endif
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 3) {
        std::fprintf(stderr, "usage: %s LIBRARY THREAD-ID-FILE [NAME=VALUE ...]\n", argv[0]);
        return 2;
    }
    for (int i = 3; i < argc; ++i)
        setVariable(argv[i]);

    using EntryPoint = void (*)();
#if defined(_WIN32)
    HMODULE library = LoadLibraryA(argv[1]);
    if (!library) {
        std::fprintf(stderr, "cannot load %s: error %lu\n", argv[1], GetLastError());
        return 3;
    }
    auto init = reinterpret_cast<EntryPoint>(GetProcAddress(library, "VornParametersQt4Init"));
    auto deinit = reinterpret_cast<EntryPoint>(GetProcAddress(library, "VornParametersQt4Deinit"));
#else
    void* library = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        std::fprintf(stderr, "cannot load %s: %s\n", argv[1], dlerror());
        return 3;
    }
    auto init = reinterpret_cast<EntryPoint>(dlsym(library, "VornParametersQt4Init"));
    auto deinit = reinterpret_cast<EntryPoint>(dlsym(library, "VornParametersQt4Deinit"));
#endif
    if (!init || !deinit) {
        std::fprintf(stderr, "entry points missing in %s\n", argv[1]);
        return 4;
    }

    init();
    deinit();

    if (std::FILE* out = std::fopen(argv[2], "w")) {
        std::fprintf(out, "%lu\n", threadId());
        std::fclose(out);
    }
    return 0;
}
