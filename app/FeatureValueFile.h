#pragma once

#include "FeatureAssignment.h"
#include "FeatureFailure.h"

#include <vorn/host/MvParametersEntryNode.h>

#include <optional>
#include <string>
#include <vector>

namespace vorn {
namespace browser {

// The feature value file: plain text, one "Name=Value" per line in tree order, so that people can
// read, compare and edit it. Lines that start with '#' are comments (the writer puts the category
// path above each group of features), blank lines are ignored. Spaces around the name are ignored;
// the value is everything after the first '=' as written, with \\, \n, \r and \t standing for a
// backslash, a line feed, a carriage return and a tab. One index of a field is written
// "Name[index]=Value". Values are written as their parameter kind formats them.
//
// The writer keeps the features a person can set: those that hold a value, are writable now, whose
// last read succeeded and that are not internal nodes, each once (a feature shown in two categories is
// written where it first appears).
class FeatureValueFile
{
public:
    // Stands for a character of the file that Latin-1 cannot hold (SUB, which no text holds): a line
    // with it is refused.
    static constexpr char kBeyondLatin1 = '\x1a';

    struct Reading
    {
        std::vector<FeatureAssignment> assignments;
        std::vector<FeatureFailure> problems; // the lines that are not assignments
    };

    // The file's text for the features below root; each line of heading becomes a comment on top.
    static std::string write(const boost::shared_ptr<core::models::MvParametersEntryNode>& root,
                             const std::string& heading);
    static Reading read(const std::string& text);

    // The line that sets the node to its value ("Gain=12"), or nothing for a node a person cannot set
    // (no value, not writable now, unread, internal).
    static std::optional<std::string> line(const core::models::MvParametersEntryNode& node);

    // One assignment such as "Width=640" or "CounterValue[2]=10"; false and why in *reason when the
    // text is not one. The value is taken as written (no escapes): this is the command line's form.
    static bool parseAssignment(const std::string& text, FeatureAssignment* assignment, std::string* reason);

    static std::string escape(const std::string& value);
    static std::string unescape(const std::string& value);
};

} // namespace browser
} // namespace vorn
