#pragma once

// Numbers as the parameter library writes them: in value texts of the views, in messages and in value
// files. The texts are those of Qt's string class (QString::number and QString::arg) where a view shows
// them, made without Qt and several times faster: views make them on every repaint.
//
// The *In functions write into a NumberBuffer on the caller's stack and return a view of it, so that a
// caller can put a text together from pieces in one allocation; the others return strings.

#include <vorn/base/VornExport.h>
#include <vorn/host/ParameterEnums.h>

#include <charconv>
#include <string>
#include <string_view>
#include <type_traits>

namespace vorn {
namespace core {
namespace models {
namespace texts {

// Room for any number text below: 64 binary digits and a sign, or a double in any of its forms.
struct NumberBuffer
{
    char text[80];
};

// Lower-case, unpadded digits of an integer in base 2, 10 or 16. A negative value is written as a minus
// sign and its magnitude ("-ff"), never as a two's complement that would read as a huge number.
template <class T> std::string_view digitsIn(NumberBuffer& buffer, T value, int base)
{
    static_assert(std::is_integral<T>::value, "integers only");
    const auto end = std::to_chars(buffer.text, buffer.text + sizeof buffer.text, value, base).ptr;
    return std::string_view(buffer.text, static_cast<std::size_t>(end - buffer.text));
}

template <class T> std::string digits(T value, int base)
{
    NumberBuffer buffer;
    return std::string(digitsIn(buffer, value, base));
}

// The low 32 bits as four decimal bytes, most significant first: 0xC0A80001 is "192.168.0.1".
VORN_PARAMETERS_API std::string_view dottedIn(NumberBuffer& buffer, unsigned long long value);

// The low 48 bits as six two-digit hex bytes joined by ':', least significant first: devices report MAC
// addresses in this byte order, and the text keeps it (0x0000AABBCCDDEEFF is "ff:ee:dd:cc:bb:aa").
VORN_PARAMETERS_API std::string_view macIn(NumberBuffer& buffer, unsigned long long value);

// A double as QString::arg(double) writes it: format 'g' with six significant digits, at least two
// exponent digits, and "0" (also for -0), "nan", "inf" and "-inf". Halfway cases round away from zero.
VORN_PARAMETERS_API std::string_view floatIn(NumberBuffer& buffer, double value);
VORN_PARAMETERS_API std::string floatText(double value);

// A double that reads back as the same number: whole numbers below 10^15 in plain digits (10000000
// rather than 1e+07), every other number in its shortest form.
VORN_PARAMETERS_API std::string exactFloatText(double value);

// The value text of an integer for every representation but the check box: "0x" and hex digits with the
// unit for a hexadecimal number, the dotted or colon address without unit, else decimal with the unit.
template <class T>
std::string integerText(T value, ParameterIntegerRepresentation representation, const std::string& unit)
{
    NumberBuffer buffer;
    std::string text;
    switch (representation) {
    case pirHexNumber:
        text = "0x";
        text += digitsIn(buffer, value, 16);
        break;
    case pirIPV4Address:
        return std::string(dottedIn(buffer, static_cast<unsigned long long>(value)));
    case pirMACAddress:
        return std::string(macIn(buffer, static_cast<unsigned long long>(value)));
    default:
        text = digitsIn(buffer, value, 10);
        break;
    }
    if (!unit.empty())
        text += ' ' + unit;
    return text;
}

// Without blanks and tabs at either end, as values and names are read from text.
VORN_PARAMETERS_API std::string trimmed(const std::string& text);

// Puts arguments into a text the way QString::arg does, one call a placeholder: the placeholders with
// the lowest number (%1 to %99) all take the argument, so a later argument fills the next number. Used
// for messages whose texts are fixed with their placeholders.
VORN_PARAMETERS_API std::string arg(const std::string& text, const std::string& argument);

} // namespace texts
} // namespace models
} // namespace core
} // namespace vorn
