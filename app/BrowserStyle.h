#pragma once

namespace vorn {
namespace browser {

// The browser's look: the application font. The models fix their row heights (14 pixels for plain
// rows, 17 for styled rows, 12 for styled categories) and the command button is 64 by 16 pixels, so
// the font must be small enough for its letters to fit those rows while staying easy to read.
class BrowserStyle
{
public:
    static void apply();
};

} // namespace browser
} // namespace vorn
