#pragma once

// Parameter trees shaped like the descriptions cameras ship: categories of 5 to 60 features nested two
// to four deep, about 30% enumerations, 5% commands, 10% strings, 10% floats, the rest integers and
// booleans, with visibility levels and access modes mixed. The same size and seed always give the same
// tree.

#include <vorn/host/InMemoryParameterTree.h>

#include <string>

namespace vorn {
namespace bench {

// Where the rows above a level sit among their siblings.
enum class HiddenRows {
    Interleaved, // spread: one in every few siblings is above the level
    Clustered,   // together at the end of each category, as vendors order them
};

const char* hiddenRowsName(HiddenRows layout);

// A tree of `features` parameters (categories not counted).
boost::shared_ptr<core::models::InMemoryParameterTree> buildCameraShapedTree(int features, HiddenRows layout,
                                                                             unsigned seed = 20261124);

} // namespace bench
} // namespace vorn
