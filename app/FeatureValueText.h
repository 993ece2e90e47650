#pragma once

#include <vorn/host/MvParametersEntryNode.h>

#include <boost/any.hpp>

#include <optional>
#include <string>

namespace vorn {
namespace browser {

// A feature's value as the text people read and write in value files and on the command line, and
// back into the value the tree's callback takes.
//
// Texts: integers in decimal ("0x" hexadecimal for hexadecimal numbers and MAC addresses, dotted for
// IPv4 addresses), floats in the shortest form that reads back as the same number, booleans as true
// or false, enumerations by their entry's symbolic name, strings as they are. Reading also accepts
// 0x and 0b prefixes and dotted addresses for every integer, true/false for check-box integers, 1/0,
// yes/no and on/off for booleans, and an entry's display name or number for enumerations. A command
// takes no value (or the word "execute") and is executed.
class FeatureValueText
{
public:
    // The value of a feature that holds one and whose last read succeeded; nothing otherwise.
    static std::optional<std::string> format(const core::models::MvParametersEntryNode& node);

    // The value for the tree's callback in *value; on failure the reason ("not an integer") and
    // *value untouched. Range and increment are left to the tree, which knows the current limits.
    static bool parse(const core::models::MvParametersEntryNode& node, const std::string& text,
                      boost::any* value, std::string* reason);

    // A float that reads back as the same number: whole numbers below 10^15 in plain digits
    // (10000000 rather than 1e+07), every other number in its shortest form.
    static std::string floatText(double value);
};

} // namespace browser
} // namespace vorn
