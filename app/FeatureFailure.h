#pragma once

#include <string>

namespace vorn {
namespace browser {

// A value that did not take, or a line of a value file that is not an assignment, and why.
struct FeatureFailure
{
    int line = 0; // the line of the value file; 0 for the command line and for reports of the device
    std::string message;

    // "line 4: message" where there is a line, the message alone otherwise.
    std::string text() const { return line > 0 ? "line " + std::to_string(line) + ": " + message : message; }
};

} // namespace browser
} // namespace vorn
