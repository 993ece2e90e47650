#include <vorn/host/ParameterText.h>

#include <climits>
#include <cmath>
#include <cstring>
#include <limits>

namespace vorn {
namespace core {
namespace models {
namespace texts {

namespace {

std::string_view viewOf(NumberBuffer& buffer, const char* end)
{
    return std::string_view(buffer.text, static_cast<std::size_t>(end - buffer.text));
}

// Significant digits of a double and the power of ten of the first one: 1.5e-05 is "15" and -5.
struct Digits
{
    char digits[24];
    int count = 0;
    int exponent = 0;
    bool negative = false;
};

// Reads a text that std::to_chars wrote in scientific form ("-d.ddde+XX").
void readScientific(const char* begin, const char* end, Digits* out)
{
    const char* p = begin;
    out->negative = *p == '-';
    if (out->negative)
        ++p;
    out->count = 0;
    for (; p != end && *p != 'e'; ++p)
        if (*p != '.' && out->count < static_cast<int>(sizeof out->digits))
            out->digits[out->count++] = *p;
    out->exponent = 0;
    if (p != end)
        std::from_chars(p + 1 + (p[1] == '+'), end, out->exponent);
}

// Six significant digits, the way Qt rounds them: to the nearest, and a value exactly halfway between
// two texts away from zero (std::to_chars goes to the even digit there).
void sixDigits(double value, Digits* out)
{
    char text[40];
    const char* end = std::to_chars(text, text + sizeof text, value, std::chars_format::scientific, 5).ptr;
    readScientific(text, end, out);

    // A halfway case has exactly seven significant digits, the last a 5: its exact decimal expansion
    // ends there. Any other double differs from such a text within its first 40 digits or so.
    char exact[96];
    const char* exactEnd =
        std::to_chars(exact, exact + sizeof exact, value, std::chars_format::scientific, 60).ptr;
    Digits all;
    readScientific(exact, exactEnd, &all);
    if (all.count < 8 || all.digits[6] != '5')
        return;
    for (int i = 7; i < all.count; ++i)
        if (all.digits[i] != '0')
            return;
    // Round the first six digits up.
    std::memcpy(out->digits, all.digits, 6);
    out->count = 6;
    out->exponent = all.exponent;
    int i = 5;
    while (i >= 0 && out->digits[i] == '9')
        out->digits[i--] = '0';
    if (i >= 0) {
        ++out->digits[i];
    } else {
        out->digits[0] = '1';
        ++out->exponent;
    }
}

// Lays digits out as format 'g' does: trailing zeros dropped, an exponent (two digits at least) below
// 10^-4 and from 10^precision on, plain decimals between.
const char* layOut(Digits d, int precision, char* out)
{
    while (d.count > 1 && d.digits[d.count - 1] == '0')
        --d.count;
    if (d.negative)
        *out++ = '-';
    if (d.exponent < -4 || d.exponent >= precision) {
        *out++ = d.digits[0];
        if (d.count > 1) {
            *out++ = '.';
            for (int i = 1; i < d.count; ++i)
                *out++ = d.digits[i];
        }
        *out++ = 'e';
        *out++ = d.exponent < 0 ? '-' : '+';
        const int magnitude = d.exponent < 0 ? -d.exponent : d.exponent;
        if (magnitude < 10)
            *out++ = '0';
        return std::to_chars(out, out + 4, magnitude).ptr;
    }
    if (d.exponent < 0) {
        *out++ = '0';
        *out++ = '.';
        for (int i = -1; i > d.exponent; --i)
            *out++ = '0';
        for (int i = 0; i < d.count; ++i)
            *out++ = d.digits[i];
        return out;
    }
    for (int i = 0; i <= d.exponent; ++i)
        *out++ = i < d.count ? d.digits[i] : '0';
    if (d.count > d.exponent + 1) {
        *out++ = '.';
        for (int i = d.exponent + 1; i < d.count; ++i)
            *out++ = d.digits[i];
    }
    return out;
}

} // namespace

std::string_view dottedIn(NumberBuffer& buffer, unsigned long long value)
{
    char* out = buffer.text;
    for (int shift = 24; shift >= 0; shift -= 8) {
        out = std::to_chars(out, buffer.text + sizeof buffer.text, (value >> shift) & 0xffu).ptr;
        if (shift > 0)
            *out++ = '.';
    }
    return viewOf(buffer, out);
}

std::string_view macIn(NumberBuffer& buffer, unsigned long long value)
{
    static const char hex[] = "0123456789abcdef";
    char* out = buffer.text;
    for (int i = 0; i < 6; ++i) {
        if (i > 0)
            *out++ = ':';
        const unsigned byte = static_cast<unsigned>((value >> (8 * i)) & 0xffu);
        *out++ = hex[byte >> 4];
        *out++ = hex[byte & 0xfu];
    }
    return viewOf(buffer, out);
}

std::string_view floatIn(NumberBuffer& buffer, double value)
{
    if (value == 0)
        return "0";
    if (std::isnan(value))
        return "nan";
    if (std::isinf(value))
        return value < 0 ? "-inf" : "inf";

    // Most values shown have six significant digits or fewer: their shortest round-trip digits (the
    // fastest conversion) are then the six-digit text, since a double's neighbours lie far closer than
    // six digits can tell apart. Subnormal numbers have too few bits for that to hold.
    Digits d;
    if (std::fabs(value) >= std::numeric_limits<double>::min()) {
        char shortest[40];
        const char* end =
            std::to_chars(shortest, shortest + sizeof shortest, value, std::chars_format::scientific).ptr;
        readScientific(shortest, end, &d);
        if (d.count <= 6)
            return viewOf(buffer, layOut(d, 6, buffer.text));
    }
    sixDigits(value, &d);
    return viewOf(buffer, layOut(d, 6, buffer.text));
}

std::string floatText(double value)
{
    NumberBuffer buffer;
    return std::string(floatIn(buffer, value));
}

std::string exactFloatText(double value)
{
    NumberBuffer buffer;
    if (std::fabs(value) < 1e15 && value == std::trunc(value)) {
        // Plain digits; -0 keeps its sign, which reads back as -0.
        const auto end =
            std::to_chars(buffer.text, buffer.text + sizeof buffer.text, value, std::chars_format::fixed, 0)
                .ptr;
        return std::string(viewOf(buffer, end));
    }
    if (std::isnan(value))
        return "nan";
    if (std::isinf(value))
        return value < 0 ? "-inf" : "inf";
    // The shortest digits that read back as the value, in plain decimals or with an exponent, whichever
    // is shorter: 0.1, 1.5e-05, 1e+20.
    const auto end = std::to_chars(buffer.text, buffer.text + sizeof buffer.text, value).ptr;
    return std::string(viewOf(buffer, end));
}

std::string trimmed(const std::string& text)
{
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string::npos)
        return std::string();
    const auto last = text.find_last_not_of(" \t");
    return text.substr(first, last - first + 1);
}

std::string arg(const std::string& text, const std::string& argument)
{
    // Find the lowest placeholder number: '%', an optional 'L', one or two digits.
    int lowest = INT_MAX;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%')
            continue;
        std::size_t j = i + 1;
        if (j < text.size() && text[j] == 'L')
            ++j;
        if (j >= text.size() || text[j] < '0' || text[j] > '9')
            continue;
        int number = text[j] - '0';
        if (j + 1 < text.size() && text[j + 1] >= '0' && text[j + 1] <= '9')
            number = 10 * number + (text[j + 1] - '0');
        if (number < lowest)
            lowest = number;
    }
    if (lowest == INT_MAX)
        return text;
    std::string result;
    result.reserve(text.size() + argument.size());
    for (std::size_t i = 0; i < text.size();) {
        if (text[i] == '%') {
            std::size_t j = i + 1;
            if (j < text.size() && text[j] == 'L')
                ++j;
            if (j < text.size() && text[j] >= '0' && text[j] <= '9') {
                int number = text[j] - '0';
                std::size_t next = j + 1;
                if (next < text.size() && text[next] >= '0' && text[next] <= '9') {
                    number = 10 * number + (text[next] - '0');
                    ++next;
                }
                if (number == lowest) {
                    result += argument;
                    i = next;
                    continue;
                }
            }
        }
        result += text[i++];
    }
    return result;
}

} // namespace texts
} // namespace models
} // namespace core
} // namespace vorn
