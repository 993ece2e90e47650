#include "family/parameters/kinds/KindSupport.h"

#include <charconv>

namespace vorn {
namespace core {
namespace models {
namespace kinds {

namespace {

bool digitsOf(const std::string& text, int base, unsigned long long* magnitude)
{
    if (text.empty())
        return false;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), *magnitude, base);
    return result.ec == std::errc() && result.ptr == text.data() + text.size();
}

// a.b.c.d with four bytes, the first the most significant.
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

// Six hex bytes joined by ':', the first the least significant.
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

} // namespace

std::string trimmed(const std::string& text)
{
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string::npos)
        return std::string();
    const auto last = text.find_last_not_of(" \t");
    return text.substr(first, last - first + 1);
}

std::string lowered(std::string text)
{
    for (char& c : text)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return text;
}

bool integerOf(const std::string& input, bool* negative, unsigned long long* magnitude)
{
    std::string text = trimmed(input);
    *negative = !text.empty() && text[0] == '-';
    if (*negative || (!text.empty() && text[0] == '+'))
        text.erase(0, 1);
    const std::string prefix = lowered(text.substr(0, 2));
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
    const std::string text = lowered(trimmed(input));
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

std::string quoted(const std::string& text)
{
    return "\"" + text + "\"";
}

} // namespace kinds
} // namespace models
} // namespace core
} // namespace vorn
