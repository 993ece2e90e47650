#pragma once

#include "host/InMemoryParameterTree.h"

namespace vorn {
namespace example {

// A small camera-like tree with every kind of feature and every integer representation, for the
// browser's built-in demo, tests and benchmarks. Its "AcquisitionStart" command stays active for
// activeMilliseconds after it is executed (0: it finishes at once).
boost::shared_ptr<core::models::InMemoryParameterTree> buildExampleTree(int activeMilliseconds = 1500);

// A generated tree of count features of every kind, in categories of 50, with visibilities, access
// modes and representations cycling, for tests and benchmarks of large trees.
boost::shared_ptr<core::models::InMemoryParameterTree> buildGeneratedTree(int count);

} // namespace example
} // namespace vorn
