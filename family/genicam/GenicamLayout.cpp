#include "family/genicam/GenicamLayout.h"

#include <cmath>
#include <sstream>

namespace vorn {
namespace core {
namespace models {
namespace genicam {

namespace {

// A float that reads NaN every time has not changed.
bool same(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

// The value as the message shows it: an enumeration's by its entry, empty for a value of a type the
// feature does not take.
std::string describeValue(const FeatureLayout& f, const boost::any& value)
{
    if (const long long* v = boost::any_cast<long long>(&value)) {
        for (const EnumEntryLayout& entry : f.entries) {
            if (entry.value == *v)
                return entry.name;
        }
        return toText(*v);
    }
    if (const unsigned long long* v = boost::any_cast<unsigned long long>(&value))
        return toText(*v);
    if (const double* v = boost::any_cast<double>(&value))
        return toText(*v);
    if (const bool* v = boost::any_cast<bool>(&value))
        return *v ? "true" : "false";
    if (const std::string* v = boost::any_cast<std::string>(&value))
        return "\"" + *v + "\"";
    return std::string();
}

} // namespace

std::string refusedWriteMessage(const FeatureLayout& feature, const boost::any& value,
                                const std::string& reason)
{
    if (feature.kind == FeatureKind::Command)
        return "Cannot execute " + feature.name + ": " + reason;
    const std::string text = describeValue(feature, value);
    if (text.empty())
        return "Cannot set " + feature.name + ": " + reason;
    return "Cannot set " + feature.name + " to " + text + ": " + reason;
}

bool operator==(const FeatureState& a, const FeatureState& b)
{
    return a.valid == b.valid && a.access == b.access && a.intValue == b.intValue && a.intMin == b.intMin &&
           a.intMax == b.intMax && a.intInc == b.intInc && a.uintValue == b.uintValue &&
           a.uintMax == b.uintMax && a.uintInc == b.uintInc && same(a.floatValue, b.floatValue) &&
           same(a.floatMin, b.floatMin) && same(a.floatMax, b.floatMax) && a.boolValue == b.boolValue &&
           a.text == b.text && a.maxLength == b.maxLength && a.entryAccess == b.entryAccess &&
           a.active == b.active;
}

} // namespace genicam
} // namespace models
} // namespace core
} // namespace vorn
