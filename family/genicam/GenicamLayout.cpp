#include "family/genicam/GenicamLayout.h"

#include <cmath>

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

} // namespace

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
