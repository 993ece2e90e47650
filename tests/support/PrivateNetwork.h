#pragma once

// A network of the test program's own. Aravis's simulated GigE Vision camera holds the GigE Vision
// port of the interface it serves, and a client finds whichever camera answers there: two test runs
// on one machine, or a camera someone else left running on the loopback, would meet each other. A
// program that serves a camera therefore moves into a network namespace of its own, with only its
// own loopback, before anything starts a thread; every process it starts (the camera, Aravis's
// tools, the browser) inherits it.
//
// A program asks for it in CMake (vorn_test(... PRIVATE_NETWORK)); the shared main then calls
// enterPrivateNetworkWhenAsked() first thing. As root a network namespace is enough; otherwise a user
// namespace of our own holds it, where the kernel allows unprivileged ones.

#include <string>

namespace vorn {
namespace test {

// The private loopback's addresses: 127.0.0.1, and this one beside it for a second camera.
constexpr const char* kSecondLoopbackAddress = "127.0.0.2";

// Called before main by the programs that asked for a network of their own.
void askForPrivateNetwork();

// Called by the shared main before anything starts a thread.
void enterPrivateNetworkWhenAsked();

// Empty when the program runs in a network of its own with its loopback up, else why not (a test
// that did not ask for one fails).
std::string whyNoPrivateNetwork();

} // namespace test
} // namespace vorn
