#pragma once

namespace vorn {
namespace core {
namespace rows {

// The host setting that chooses how the styled rows write integers when a parameter leaves it open:
// 0 decimal, 1 hexadecimal, 2 binary.
inline const char* integerViewModeKey()
{
    return "gui.preferences.gui.params.integer.viewmode";
}

} // namespace rows
} // namespace core
} // namespace vorn
