#pragma once

// Helpers of the frame tests: where the build put things, temporary installation roots, environment
// variables, child processes and log files, on Windows and POSIX alike.

#include <string>
#include <vector>

namespace vorn {
namespace test {

// The platform's path separator and the directory under an installation root that modules live in
// ("lib" on POSIX, "bin" on Windows).
char pathSeparator();
const char* moduleDirectoryName();

std::string joinPath(const std::string& directory, const std::string& name);

// The build tree: the directory of the running test program, the library and the dispatcher.
std::string executableDirectory();
std::string buildDirectory();
std::string builtLibraryPath();
std::string builtDispatcherPath();
std::string builtHostPath();
std::string builtNoDescriptorModulePath();

// A fresh empty directory under the system's temporary directory, removed with the object.
class TemporaryDirectory
{
public:
    TemporaryDirectory();
    ~TemporaryDirectory();
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    const std::string& path() const { return m_path; }

private:
    std::string m_path;
};

// Creates ROOT/<module directory> and copies the named files into it; returns that directory.
std::string installModules(const std::string& root,
                           const std::vector<std::pair<std::string, std::string>>& files);
void makeDirectories(const std::string& path);
void copyFile(const std::string& from, const std::string& to);
void writeFile(const std::string& path, const std::string& text);
bool fileExists(const std::string& path);
std::vector<std::string> readLines(const std::string& path);

// The dispatcher's file name under its module directory (libNAME.so, NAME.dll).
std::string dispatcherFileName();

// Sets (or, for null, removes) an environment variable of this process.
void setEnvironment(const char* name, const char* value);

// Restores an environment variable's value when it goes.
class ScopedEnvironment
{
public:
    ScopedEnvironment(const char* name, const char* value);
    ~ScopedEnvironment();
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

private:
    std::string m_name;
    bool m_had;
    std::string m_value;
};

// Runs a program with arguments, waits for it and returns its exit code (-1 if it could not run).
int runProcess(const std::string& program, const std::vector<std::string>& arguments);

// Whether the module at path is loaded in this process.
bool isModuleLoaded(const std::string& path);

} // namespace test
} // namespace vorn
