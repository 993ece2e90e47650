#pragma once

// What the parameter kinds share: reading values from text, and the kinds themselves, one function a
// kind, for ParameterKind::of. The parameter library's own.

#include <vorn/host/ParameterKind.h>

#include <string>

namespace vorn {
namespace core {
namespace models {
namespace kinds {

const ParameterKind& entryKind();
const ParameterKind& categoryKind();
const ParameterKind& integerKind();
const ParameterKind& uint64Kind();
const ParameterKind& floatKind();
const ParameterKind& booleanKind();
const ParameterKind& stringKind();
const ParameterKind& enumerationKind();
const ParameterKind& commandKind();

// Without blanks and tabs at either end.
std::string trimmed(const std::string& text);
std::string lowered(std::string text);

// An integer's sign and magnitude, written in decimal, with 0x or 0b, as a dotted IPv4 address or a
// colon-separated MAC address (as the views show them); blanks around it are allowed.
bool integerOf(const std::string& text, bool* negative, unsigned long long* magnitude);

// true/false, 1/0, yes/no, on/off, in any case.
bool booleanOf(const std::string& text, bool* value);

// A text in quotes, for messages.
std::string quoted(const std::string& text);

} // namespace kinds
} // namespace models
} // namespace core
} // namespace vorn
