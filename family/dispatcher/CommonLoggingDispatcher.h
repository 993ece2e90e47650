#pragma once

// common-logging-dispatcher: the logging dispatcher of the product family. Libraries load it from their
// installation root (ROOT/lib/libcommon-logging-dispatcher.so, ROOT\bin\common-logging-dispatcher.dll),
// enter it through the exported "logging_dispatcher_descriptor" (lib/LoggingDispatcherDescriptor.h),
// ask it for named loggers and hand it their records. It writes each record as one line:
//
//     2026-11-21 19:42:53.123 INFO  guard.library - thread-id=4711|LIBRARY INIT: VornParametersQt4 (useCount:
//     1)
//
// (local time; " (file:line)" follows when the record names a source location).
//
// Configuration, read once when the first library registers:
//
//   1. The file ROOT/etc/common-logging-dispatcher.conf (ROOT is the directory above the one the
//      dispatcher is installed in), or the file named by VORN_LOG_CONFIG. Lines of "key = value";
//      "#" starts a comment:
//          levels = *=info, guard=warning, guard.library=debug
//          output = stderr
//   2. The environment, which wins over the file:
//          VORN_LOG_LEVELS  the same list as "levels"
//          VORN_LOG_OUTPUT  the same as "output"
//
// levels: comma-separated NAME=LEVEL entries. A logger takes the entry of its own name, else of the
// longest dotted prefix of it ("guard" for "guard.library"), else "*". LEVEL is a number from 0 to 7 or
// one of trace, debug, info, notice, warning, error, fatal, off (0 to 7 in that order); a logger writes
// the levels at or above its own. Without configuration every logger writes info and above.
//
// output: "stderr" (the default), "stdout", or the path of a file to append to.

#include <vorn/base/LoggingDispatcherDescriptor.h>

#include <cstdint>
#include <string>

namespace vorn {
namespace dispatcher {

// The level a logger has when nothing configures it.
constexpr std::uint32_t kDefaultLevel = 2;

// "info" or "2" → 2; false for anything else.
bool parseLevel(const std::string& text, std::uint32_t* level);
const char* levelName(std::uint32_t level);

} // namespace dispatcher
} // namespace vorn
