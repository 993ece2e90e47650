#pragma once

#include <vorn/lib/VornParametersQt4.h>

namespace vorn {
namespace browser {

// Holds the parameter library initialised for as long as it lives, as every host must: init before
// the first model, node, delegate or editor is made, and one deinit for that init after the last one
// is gone. Declare it before anything that uses the library so that it is destroyed after them.
class LibraryScope
{
public:
    LibraryScope() { VornParametersQt4Init(); }
    ~LibraryScope() { VornParametersQt4Deinit(); }
    LibraryScope(const LibraryScope&) = delete;
    LibraryScope& operator=(const LibraryScope&) = delete;
};

} // namespace browser
} // namespace vorn
