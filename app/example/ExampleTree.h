#pragma once

#include <vorn/host/InMemoryParameterTree.h>

namespace vorn {
namespace example {

// A small camera-like tree with every kind of feature and every integer representation, for the
// browser's built-in demo, tests and benchmarks. Its "AcquisitionStart" command stays active for
// activeMilliseconds after it is executed (0: it finishes at once).
boost::shared_ptr<core::models::InMemoryParameterTree> buildExampleTree(int activeMilliseconds = 1500);

// How the visibility levels of a generated tree's features are laid out.
enum class VisibilityLayout {
    Interleaved, // levels cycle from one feature to the next: a level change touches every other row
    Clustered,   // as in real devices: each category's first 60% beginner, then 20% expert, 10% guru and
                 // 10% invisible
};

// A generated tree of count features of every kind, in categories of categorySize (50 unless given)
// whose own visibility cycles through beginner, expert and guru, with access modes and
// representations cycling, for tests and benchmarks of large trees.
boost::shared_ptr<core::models::InMemoryParameterTree>
buildGeneratedTree(int count, VisibilityLayout layout = VisibilityLayout::Interleaved, int categorySize = 50);

} // namespace example
} // namespace vorn
