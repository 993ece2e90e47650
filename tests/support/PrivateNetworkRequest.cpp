// Linked into the test programs that serve a simulated camera (vorn_test(... PRIVATE_NETWORK)): asks
// the shared main for a network of the program's own before main runs.
#include "support/PrivateNetwork.h"

namespace {

[[maybe_unused]] const bool g_askedForPrivateNetwork = (vorn::test::askForPrivateNetwork(), true);

} // namespace
