#include "FrameTestSupport.h"

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#if defined(_WIN32)
#include <vorn/base/WindowsApi.h>
#else
#include <dlfcn.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
extern char** environ;
#endif

namespace fs = std::filesystem;

namespace vorn {
namespace test {

char pathSeparator()
{
#if defined(_WIN32)
    return '\\';
#else
    return '/';
#endif
}

const char* moduleDirectoryName()
{
#if defined(_WIN32)
    return "bin";
#else
    return "lib";
#endif
}

std::string joinPath(const std::string& directory, const std::string& name)
{
    return directory + pathSeparator() + name;
}

std::string executableDirectory()
{
#if defined(_WIN32)
    char path[1024];
    const DWORD length = GetModuleFileNameA(nullptr, path, sizeof path);
    return fs::path(std::string(path, length)).parent_path().string();
#else
    return fs::read_symlink("/proc/self/exe").parent_path().string();
#endif
}

std::string buildDirectory()
{
    return fs::path(executableDirectory()).parent_path().string();
}

std::string builtLibraryPath()
{
    // Test programs go to bin/; shared libraries to lib/ (DLLs to bin/ beside the programs).
    return joinPath(joinPath(buildDirectory(), moduleDirectoryName()), VORN_TEST_LIBRARY_FILE);
}

std::string builtDispatcherPath()
{
    return joinPath(joinPath(buildDirectory(), "dispatcher"), VORN_TEST_DISPATCHER_FILE);
}

std::string builtHostPath()
{
    return joinPath(executableDirectory(), VORN_TEST_HOST_FILE);
}

std::string builtNoDescriptorModulePath()
{
    return joinPath(joinPath(buildDirectory(), "testmodules"), VORN_TEST_NO_DESCRIPTOR_FILE);
}

std::string dispatcherFileName()
{
#if defined(_WIN32)
    return "common-logging-dispatcher.dll";
#else
    return "libcommon-logging-dispatcher.so";
#endif
}

TemporaryDirectory::TemporaryDirectory()
{
    static std::atomic<unsigned> counter{0};
    const auto stamp = std::chrono::steady_clock::now().time_since_epoch().count();
#if defined(_WIN32)
    const unsigned long process = GetCurrentProcessId();
#else
    const unsigned long process = static_cast<unsigned long>(getpid());
#endif
    const fs::path path =
        fs::temp_directory_path() / ("vorn-frame-" + std::to_string(process) + "-" + std::to_string(stamp) +
                                     "-" + std::to_string(++counter));
    fs::create_directories(path);
    m_path = path.string();
}

TemporaryDirectory::~TemporaryDirectory()
{
    std::error_code error;
    fs::remove_all(m_path, error);
}

void makeDirectories(const std::string& path)
{
    fs::create_directories(path);
}

void copyFile(const std::string& from, const std::string& to)
{
    fs::copy_file(from, to, fs::copy_options::overwrite_existing);
}

std::string installModules(const std::string& root,
                           const std::vector<std::pair<std::string, std::string>>& files)
{
    const std::string directory = joinPath(root, moduleDirectoryName());
    makeDirectories(directory);
    for (const auto& file : files)
        copyFile(file.first, joinPath(directory, file.second));
    return directory;
}

void writeFile(const std::string& path, const std::string& text)
{
    std::ofstream out(path, std::ios::binary);
    out << text;
}

bool fileExists(const std::string& path)
{
    return fs::exists(path);
}

std::vector<std::string> readLines(const std::string& path)
{
    std::vector<std::string> lines;
    std::ifstream in(path);
    std::string line;
    while (std::getline(in, line)) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

void setEnvironment(const char* name, const char* value)
{
#if defined(_WIN32)
    // An empty value removes the variable, which is what null means here.
    _putenv_s(name, value ? value : "");
#else
    if (value)
        setenv(name, value, 1);
    else
        unsetenv(name);
#endif
}

ScopedEnvironment::ScopedEnvironment(const char* name, const char* value) : m_name(name)
{
    const char* old = std::getenv(name);
    m_had = old != nullptr;
    if (old)
        m_value = old;
    setEnvironment(name, value);
}

ScopedEnvironment::~ScopedEnvironment()
{
    setEnvironment(m_name.c_str(), m_had ? m_value.c_str() : nullptr);
}

int runProcess(const std::string& program, const std::vector<std::string>& arguments)
{
#if defined(_WIN32)
    std::string commandLine = "\"" + program + "\"";
    for (const std::string& argument : arguments)
        commandLine += " \"" + argument + "\"";
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!CreateProcessA(program.c_str(), &commandLine[0], nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &process))
        return -1;
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD code = 0;
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return static_cast<int>(code);
#else
    std::vector<char*> argv;
    argv.push_back(const_cast<char*>(program.c_str()));
    for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    pid_t child = 0;
    if (posix_spawn(&child, program.c_str(), nullptr, nullptr, argv.data(), environ) != 0)
        return -1;
    int status = 0;
    if (waitpid(child, &status, 0) != child || !WIFEXITED(status))
        return -1;
    return WEXITSTATUS(status);
#endif
}

bool isModuleLoaded(const std::string& path)
{
#if defined(_WIN32)
    return GetModuleHandleA(path.c_str()) != nullptr;
#else
    void* module = dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (!module)
        return false;
    dlclose(module);
    return true;
#endif
}

} // namespace test
} // namespace vorn
