#pragma once

#include <string>

namespace vorn {
namespace browser {

// One "Name=Value" (or "Name[index]=Value" for one index of a field) as read from a value file or
// the command line.
struct FeatureAssignment
{
    std::string name;
    int fieldIndex = -1; // -1: the feature's first node
    std::string value;
    int line = 0; // the line of the file it was read from; 0 for the command line

    // "Name" or "Name[index]", as people wrote it.
    std::string key() const { return fieldIndex < 0 ? name : name + "[" + std::to_string(fieldIndex) + "]"; }
};

} // namespace browser
} // namespace vorn
