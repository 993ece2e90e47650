#include "FeatureValueText.h"

#include <vorn/host/MvParametersBooleanNode.h>
#include <vorn/host/MvParametersEnumerationNode.h>
#include <vorn/host/MvParametersFloatNode.h>
#include <vorn/host/MvParametersIntegerNode.h>
#include <vorn/host/MvParametersStringNode.h>
#include <vorn/host/MvParametersUInt64Node.h>

#include <QLocale>
#include <QString>

#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

namespace vorn {
namespace browser {

using namespace core::models;

namespace {

std::uint32_t typeOf(const MvParametersEntryNode& node)
{
    return static_cast<const core::GenericModelNode&>(node).typeId();
}

std::string trimmed(const std::string& text)
{
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string::npos)
        return std::string();
    const auto last = text.find_last_not_of(" \t");
    return text.substr(first, last - first + 1);
}

std::string lower(std::string text)
{
    for (char& c : text)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return text;
}

std::string hex(unsigned long long value)
{
    char buffer[24];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, 16).ptr;
    return "0x" + std::string(buffer, end);
}

bool digitsOf(const std::string& text, int base, unsigned long long* magnitude)
{
    if (text.empty())
        return false;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), *magnitude, base);
    return result.ec == std::errc() && result.ptr == text.data() + text.size();
}

// a.b.c.d with four bytes, the first the most significant, as the models show IPv4 addresses.
bool dottedOf(const std::string& text, unsigned long long* value)
{
    unsigned long long result = 0;
    std::size_t start = 0;
    for (int part = 0; part < 4; ++part) {
        const std::size_t dot = part < 3 ? text.find('.', start) : text.size();
        if (dot == std::string::npos)
            return false;
        unsigned long long byte = 0;
        if (!digitsOf(text.substr(start, dot - start), 10, &byte) || byte > 255)
            return false;
        result = (result << 8) | byte;
        start = dot + 1;
    }
    *value = result;
    return true;
}

// Six hex bytes joined by ':', the first the least significant, as the models show MAC addresses.
bool colonOf(const std::string& text, unsigned long long* value)
{
    if (text.size() != 17)
        return false;
    unsigned long long result = 0;
    for (int i = 0; i < 6; ++i) {
        if (i > 0 && text[3 * i - 1] != ':')
            return false;
        unsigned long long byte = 0;
        if (!digitsOf(text.substr(3 * i, 2), 16, &byte))
            return false;
        result |= byte << (8 * i);
    }
    *value = result;
    return true;
}

// An integer's magnitude and sign in any of the accepted forms.
bool integerOf(const std::string& input, bool* negative, unsigned long long* magnitude)
{
    std::string text = trimmed(input);
    *negative = !text.empty() && text[0] == '-';
    if (*negative || (!text.empty() && text[0] == '+'))
        text.erase(0, 1);
    const std::string prefix = lower(text.substr(0, 2));
    if (prefix == "0x")
        return digitsOf(text.substr(2), 16, magnitude);
    if (prefix == "0b")
        return digitsOf(text.substr(2), 2, magnitude);
    if (!*negative && (dottedOf(text, magnitude) || colonOf(text, magnitude)))
        return true;
    return digitsOf(text, 10, magnitude);
}

bool booleanOf(const std::string& input, bool* value)
{
    const std::string text = lower(trimmed(input));
    if (text == "true" || text == "1" || text == "yes" || text == "on") {
        *value = true;
        return true;
    }
    if (text == "false" || text == "0" || text == "no" || text == "off") {
        *value = false;
        return true;
    }
    return false;
}

bool parseSigned(const MvParametersIntegerNode& node, const std::string& text, boost::any* value,
                 std::string* reason)
{
    bool flag = false;
    if (node.getRepresentation() == pirBoolean && booleanOf(text, &flag)) {
        *value = static_cast<long long>(flag ? 1 : 0);
        return true;
    }
    bool negative = false;
    unsigned long long magnitude = 0;
    if (!integerOf(text, &negative, &magnitude)) {
        *reason = "not an integer";
        return false;
    }
    const unsigned long long limit = static_cast<unsigned long long>(std::numeric_limits<long long>::max());
    if (magnitude > limit + (negative ? 1 : 0)) {
        *reason = "outside the 64-bit integer range";
        return false;
    }
    // Negating in unsigned arithmetic keeps the most negative value exact.
    *value = static_cast<long long>(negative ? 0ull - magnitude : magnitude);
    return true;
}

bool parseUnsigned(const MvParametersUInt64Node& node, const std::string& text, boost::any* value,
                   std::string* reason)
{
    bool flag = false;
    if (node.getRepresentation() == pirBoolean && booleanOf(text, &flag)) {
        *value = static_cast<unsigned long long>(flag ? 1 : 0);
        return true;
    }
    bool negative = false;
    unsigned long long magnitude = 0;
    if (!integerOf(text, &negative, &magnitude)) {
        *reason = "not an unsigned integer";
        return false;
    }
    if (negative && magnitude != 0) {
        *reason = "negative, but the feature is unsigned";
        return false;
    }
    *value = magnitude;
    return true;
}

bool parseFloat(const std::string& input, boost::any* value, std::string* reason)
{
    bool ok = false;
    const double number = QLocale::c().toDouble(QString::fromStdString(trimmed(input)), &ok);
    if (!ok) {
        *reason = "not a number";
        return false;
    }
    *value = number;
    return true;
}

bool parseEnumeration(const MvParametersEnumerationNode& node, const std::string& input, boost::any* value,
                      std::string* reason)
{
    const std::string text = trimmed(input);
    boost::shared_ptr<MvParametersEnumEntryNode> match = node.getEnumEntryNodesEntry(text);
    std::string names;
    for (auto entries = node.getEnumEntryNodes(); !match && entries->hasNext();) {
        auto entry = entries->next();
        if (entry->getDisplayName() == text || lower(entry->getSymbolic()) == lower(text))
            match = entry;
    }
    if (!match) {
        bool negative = false;
        unsigned long long magnitude = 0;
        if (integerOf(text, &negative, &magnitude))
            match = node.entryByValue(static_cast<long long>(negative ? 0ull - magnitude : magnitude));
    }
    if (!match) {
        for (auto entries = node.getEnumEntryNodes(); entries->hasNext();) {
            auto entry = entries->next();
            names += (names.empty() ? "" : ", ") + entry->getSymbolic();
        }
        *reason = "no such entry (the entries are " + names + ")";
        return false;
    }
    // Whether the entry can be chosen now is the tree's to say: an earlier write may have changed it.
    *value = match->getValue();
    return true;
}

bool parseString(const MvParametersStringNode& node, const std::string& text, boost::any* value,
                 std::string* reason)
{
    if (node.getMaxLength() > 0 && static_cast<long long>(text.size()) > node.getMaxLength()) {
        *reason = "longer than " + std::to_string(node.getMaxLength()) + " characters";
        return false;
    }
    *value = text;
    return true;
}

} // namespace

std::optional<std::string> FeatureValueText::format(const MvParametersEntryNode& node)
{
    if (!node.getDataValid())
        return std::nullopt;
    switch (typeOf(node)) {
    case pntInteger: {
        const auto& n = static_cast<const MvParametersIntegerNode&>(node);
        const long long v = n.getNodeValue();
        switch (n.getRepresentation()) {
        case pirHexNumber:
        case pirMACAddress:
            return v < 0 ? std::to_string(v) : hex(static_cast<unsigned long long>(v));
        case pirIPV4Address:
            return QStringLiteral("%1.%2.%3.%4")
                .arg((v >> 24) & 0xff)
                .arg((v >> 16) & 0xff)
                .arg((v >> 8) & 0xff)
                .arg(v & 0xff)
                .toStdString();
        default:
            return std::to_string(v);
        }
    }
    case pntUInt64: {
        const auto& n = static_cast<const MvParametersUInt64Node&>(node);
        const auto r = n.getRepresentation();
        return r == pirHexNumber || r == pirMACAddress ? hex(n.getNodeValue())
                                                       : std::to_string(n.getNodeValue());
    }
    case pntFloat:
        return floatText(static_cast<const MvParametersFloatNode&>(node).getNodeValue());
    case pntBoolean:
        return static_cast<const MvParametersBooleanNode&>(node).getValueSet() ? "true" : "false";
    case pntString:
        return static_cast<const MvParametersStringNode&>(node).getNodeValue();
    case pntEnumeration: {
        // A value that names no entry cannot be written back, so it has no text.
        const std::string& symbolic = static_cast<const MvParametersEnumerationNode&>(node).getNodeValue();
        return symbolic.empty() ? std::nullopt : std::optional<std::string>(symbolic);
    }
    default:
        return std::nullopt;
    }
}

std::string FeatureValueText::floatText(double value)
{
    if (std::abs(value) < 1e15 && value == std::trunc(value))
        return QString::number(value, 'f', 0).toStdString();
    return QString::number(value, 'g', QLocale::FloatingPointShortest).toStdString();
}

bool FeatureValueText::parse(const MvParametersEntryNode& node, const std::string& text, boost::any* value,
                             std::string* reason)
{
    switch (typeOf(node)) {
    case pntInteger:
        return parseSigned(static_cast<const MvParametersIntegerNode&>(node), text, value, reason);
    case pntUInt64:
        return parseUnsigned(static_cast<const MvParametersUInt64Node&>(node), text, value, reason);
    case pntFloat:
        return parseFloat(text, value, reason);
    case pntBoolean: {
        bool flag = false;
        if (!booleanOf(text, &flag)) {
            *reason = "not a boolean (true or false)";
            return false;
        }
        *value = flag;
        return true;
    }
    case pntString:
        return parseString(static_cast<const MvParametersStringNode&>(node), text, value, reason);
    case pntEnumeration:
        return parseEnumeration(static_cast<const MvParametersEnumerationNode&>(node), text, value, reason);
    case pntCommand: {
        const std::string word = lower(trimmed(text));
        if (!word.empty() && word != "execute") {
            *reason = "a command takes no value (write Name= or Name=execute)";
            return false;
        }
        *value = boost::any();
        return true;
    }
    case pntCategory:
        *reason = "a category has no value";
        return false;
    default:
        *reason = "the feature has no value that can be set";
        return false;
    }
}

} // namespace browser
} // namespace vorn
