#include <vorn/lib/private/InstallationRoot.h>

#include <vorn/platform/NativeModule.h>
#include <vorn/platform/SpinLockVariableGuard.h>

#include <cctype>
#include <cstdlib>
#include <cstring>

namespace vorn {
namespace tools {
namespace logging {

using templates::platform::LockWord;
using templates::platform::SpinLockVariableGuard;
namespace native = templates::platform::native;

namespace {

// The cache: written only under its plain spin lock, and the text never changes once found is set.
char s_root[InstallationRoot::kPathCapacity];
bool s_found = false;
volatile LockWord s_lockWord = 0;

// The directories a module of the product is installed in, directly under the root.
const char* const kInstallDirectories[] = {"bin", "dll", "Hardware Applets", "lib", "lib64"};

bool equalsIgnoringCase(const char* text, std::size_t length, const char* name)
{
    if (std::strlen(name) != length)
        return false;
    for (std::size_t i = 0; i < length; ++i) {
        if (std::tolower(static_cast<unsigned char>(text[i])) !=
            std::tolower(static_cast<unsigned char>(name[i])))
            return false;
    }
    return true;
}

bool isInstallDirectory(const char* text, std::size_t length)
{
    for (const char* name : kInstallDirectories) {
        if (equalsIgnoringCase(text, length, name))
            return true;
    }
    return false;
}

// The end of path[0, end) once the separators before end are cut.
std::size_t trimSeparators(const char* path, std::size_t end)
{
    while (end > 0 && path[end - 1] == native::kPathSeparator)
        --end;
    return end;
}

// The position of the last separator in path[0, end), or end when there is none.
std::size_t lastSeparator(const char* path, std::size_t end)
{
    for (std::size_t i = end; i > 0; --i) {
        if (path[i - 1] == native::kPathSeparator)
            return i - 1;
    }
    return end;
}

bool rootFromEnvironment(std::string* root)
{
    const char* value = std::getenv("VORNDIR5_64");
    if (!value)
        value = std::getenv("VORNDIR5");
    if (!value)
        return false;
    char buffer[InstallationRoot::kPathCapacity];
    std::strncpy(buffer, value, sizeof buffer);
    buffer[sizeof buffer - 1] = '\0';
    root->assign(buffer, trimSeparators(buffer, std::strlen(buffer)));
    return true;
}

} // namespace

bool InstallationRoot::rootFromModulePath(const char* modulePath, std::string* root)
{
    if (!modulePath)
        return false;
    const std::size_t length = std::strlen(modulePath);
    // A full buffer means the system cut the name; an empty one, or one with no separator after its
    // first character, has no directories to walk.
    if (length == 0 || length >= kPathCapacity || !std::strchr(modulePath + 1, native::kPathSeparator))
        return false;

    std::size_t end = length;
    for (;;) {
        // Cut the last component with the separators before it; what ends the path now is a directory.
        const std::size_t separator = lastSeparator(modulePath, end);
        if (separator == end)
            return false;
        end = trimSeparators(modulePath, separator);
        if (end == 0)
            return false;
        const std::size_t before = lastSeparator(modulePath, end);
        const std::size_t nameStart = before == end ? 0 : before + 1;
        if (isInstallDirectory(modulePath + nameStart, end - nameStart)) {
            root->assign(modulePath, trimSeparators(modulePath, nameStart));
            return true;
        }
    }
}

const char* InstallationRoot::find()
{
    char modulePath[kPathCapacity];
    const std::size_t length = native::ownModuleFileName(modulePath, sizeof modulePath);
    // A name that fills the whole buffer was cut and is of no use.
    return findFromModulePath(length > 0 && length < sizeof modulePath ? modulePath : nullptr);
}

const char* InstallationRoot::findFromModulePath(const char* modulePath)
{
    SpinLockVariableGuard guard(&s_lockWord);
    if (s_found)
        return s_root;
    std::string root;
    if (!rootFromModulePath(modulePath, &root) && !rootFromEnvironment(&root))
        return nullptr;
    std::strncpy(s_root, root.c_str(), sizeof s_root);
    s_root[sizeof s_root - 1] = '\0';
    s_found = true;
    return s_root;
}

void InstallationRoot::resetCache()
{
    SpinLockVariableGuard guard(&s_lockWord);
    s_found = false;
    s_root[0] = '\0';
}

} // namespace logging
} // namespace tools
} // namespace vorn
