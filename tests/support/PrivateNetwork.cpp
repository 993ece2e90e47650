#include "support/PrivateNetwork.h"

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace vorn {
namespace test {

namespace {

// Constant-initialised: askForPrivateNetwork() runs during other files' dynamic initialisation.
bool g_asked = false;
bool g_entered = false;
std::string g_why;

std::string errnoText(const char* what)
{
    return std::string(what) + ": " + std::strerror(errno);
}

bool writeFile(const char* path, const std::string& text)
{
    const int fd = ::open(path, O_WRONLY | O_CLOEXEC);
    if (fd < 0)
        return false;
    const bool written = ::write(fd, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    ::close(fd);
    return written;
}

// A new network namespace has a loopback, but down and without an address; up, the kernel gives it
// 127.0.0.1 and ::1.
bool bringLoopbackUp(std::string* why)
{
    const int fd = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (fd < 0) {
        *why = errnoText("socket");
        return false;
    }
    ifreq request{};
    std::strncpy(request.ifr_name, "lo", IFNAMSIZ - 1);
    bool up = ::ioctl(fd, SIOCGIFFLAGS, &request) == 0;
    if (up) {
        request.ifr_flags |= IFF_UP | IFF_RUNNING;
        up = ::ioctl(fd, SIOCSIFFLAGS, &request) == 0;
    }
    if (!up)
        *why = errnoText("bringing the private loopback up");
    // A second address on it, for tests that serve two cameras at once (one camera per address).
    if (up) {
        ifreq alias{};
        std::strncpy(alias.ifr_name, "lo:1", IFNAMSIZ - 1);
        auto* address = reinterpret_cast<sockaddr_in*>(&alias.ifr_addr);
        address->sin_family = AF_INET;
        up = ::inet_pton(AF_INET, kSecondLoopbackAddress, &address->sin_addr) == 1 &&
             ::ioctl(fd, SIOCSIFADDR, &alias) == 0;
        if (!up)
            *why = errnoText("giving the private loopback a second address");
    }
    ::close(fd);
    return up;
}

// Without the right to make a network namespace, a user namespace of our own gives it: the same user
// and group inside, mapped onto ours, so that files keep their owners. The kernel allows it only in a
// process with one thread.
bool enterUserAndNetworkNamespace(std::string* why)
{
    const uid_t uid = ::getuid();
    const gid_t gid = ::getgid();
    if (::unshare(CLONE_NEWUSER | CLONE_NEWNET) != 0) {
        *why = errnoText("unshare(CLONE_NEWUSER | CLONE_NEWNET)") +
               " (not root, and this machine gives no user namespaces)";
        return false;
    }
    if (!writeFile("/proc/self/setgroups", "deny") ||
        !writeFile("/proc/self/uid_map", std::to_string(uid) + " " + std::to_string(uid) + " 1\n") ||
        !writeFile("/proc/self/gid_map", std::to_string(gid) + " " + std::to_string(gid) + " 1\n")) {
        *why = errnoText("mapping our user into the new user namespace");
        return false;
    }
    return true;
}

} // namespace

void askForPrivateNetwork()
{
    g_asked = true;
}

void enterPrivateNetworkWhenAsked()
{
    if (!g_asked)
        return;
    std::string why;
    if (::unshare(CLONE_NEWNET) != 0) {
        const bool refused = errno == EPERM;
        const std::string plain = errnoText("unshare(CLONE_NEWNET)");
        if (!refused || !enterUserAndNetworkNamespace(&why)) {
            g_why = why.empty() ? plain : why;
            return;
        }
    }
    if (!bringLoopbackUp(&why)) {
        g_why = why;
        return;
    }
    g_entered = true;
}

std::string whyNoPrivateNetwork()
{
    if (g_entered)
        return std::string();
    if (!g_asked) {
        // A mistake in the test's build, not something the machine lacks: fail rather than skip.
        ADD_FAILURE()
            << "the test program did not ask for a network of its own (vorn_test(... PRIVATE_NETWORK))";
        return "no network of its own for this test";
    }
    return "no network of its own for this test: " + g_why;
}

} // namespace test
} // namespace vorn
