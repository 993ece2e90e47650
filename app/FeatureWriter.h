#pragma once

#include "FeatureAssignment.h"
#include "FeatureFailure.h"

#include <string>
#include <vector>

namespace vorn {
namespace browser {

class ParameterSource;

// Writes assignments to a tree through its callback, as the views do, and says which ones did not
// take and why. The tree is the judge of access, ranges and increments: it checks them against the
// device's current state (which earlier writes of the same batch may have changed) and reports a
// refusal through the model's error channel; this class adds only what it can tell by itself (no such
// feature, a value that is not of the feature's kind). A value that a feature holds already is not
// written again.
class FeatureWriter
{
public:
    explicit FeatureWriter(ParameterSource& source) : m_source(source) {}

    // Writes the assignments in order, waits until the tree has answered them all, and returns one
    // failure per assignment that did not take, in their order, each with the assignment's line
    // ("Cannot set Width to 4097: 4097 is above the maximum 2048"). Reports of the tree that belong to
    // none of them (a device that stopped answering) come last.
    std::vector<FeatureFailure> apply(const std::vector<FeatureAssignment>& assignments);

private:
    ParameterSource& m_source;
};

} // namespace browser
} // namespace vorn
