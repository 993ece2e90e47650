#pragma once

// Helpers shared by the row classes of the three model families: text conversion, the value column's
// access rule, value texts and writes through the tree's callback. Not part of the public interface.

#include <vorn/host/GenericModelNode.h>
#include <vorn/host/MvParametersModel.h>
#include <vorn/host/ParameterEnums.h>
#include <vorn/resources/ParameterLook.h>

#include <QApplication>
#include <QCoreApplication>
#include <QFont>
#include <QHash>
#include <QIcon>
#include <QString>
#include <QStringBuilder>
#include <QVariant>

#include <boost/any.hpp>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <string>
#include <type_traits>

namespace vorn {
namespace core {
namespace rows {

// Parameter texts are 8-bit strings; each byte is one Latin-1 character.
inline QLatin1String latin1(const std::string& s)
{
    return QLatin1String(s.data(), static_cast<int>(s.size()));
}

inline QString text(const std::string& s)
{
    return QString::fromLatin1(s.data(), static_cast<int>(s.size()));
}

// The parameter node behind a row, as its own class. Rows read their node on every data() call; a
// reference costs nothing where a shared pointer copy costs two atomic operations.
template <class Node> const Node& nodeAs(const boost::shared_ptr<GenericModelNode>& node)
{
    return static_cast<const Node&>(*node);
}

using look::boldFont;
using look::fixedBoldFont;
using look::rowFonts;
using look::typeIcon;

// Answers every family's base rows give alike.
inline QVariant entryName(const boost::shared_ptr<GenericModelNode>& node, int column)
{
    if (column != 0 || !node)
        return QVariant();
    return text(nodeAs<models::MvParametersEntryNode>(node).getDisplayName());
}

inline QVariant entryToolTip(const boost::shared_ptr<GenericModelNode>& node)
{
    if (!node)
        return QVariant();
    return text(nodeAs<models::MvParametersEntryNode>(node).getToolTip());
}

// The value column is editable while the parameter can be written.
inline bool valueEditable(const boost::shared_ptr<GenericModelNode>& node, int column)
{
    return column != 0 && node && nodeAs<models::MvParametersEntryNode>(node).isWritable();
}

// The container of a parameter's child parameters, which a row hands to the framework's setupChildren.
inline boost::shared_ptr<GenericModelNode> childContainerOf(const boost::shared_ptr<GenericModelNode>& node)
{
    Q_ASSERT(node);
    return nodeAs<models::MvParametersEntryNode>(node).getChildNodesEntryNode();
}

// The low 32 bits as four decimal bytes, most significant first: 0xC0A80001 is 192.168.0.1.
template <class T> QString dottedText(T value)
{
    const quint64 v = static_cast<quint64>(value);
    return QStringLiteral("%1.%2.%3.%4")
        .arg((v >> 24) & 0xff)
        .arg((v >> 16) & 0xff)
        .arg((v >> 8) & 0xff)
        .arg(v & 0xff);
}

// The low 48 bits as six hex bytes joined by ':', least significant first. Devices report MAC
// addresses in this byte order, and the text keeps it.
template <class T> QString macText(T value)
{
    const quint64 v = static_cast<quint64>(value);
    QString result;
    result.reserve(17);
    for (int i = 0; i < 6; ++i) {
        if (i > 0)
            result += QLatin1Char(':');
        result += QStringLiteral("%1").arg((v >> (8 * i)) & 0xff, 2, 16, QLatin1Char('0'));
    }
    return result;
}

// Value texts are made on every repaint, so they are written with std::to_chars into a buffer on the
// stack and copied once into a string made to measure: the string class's own number conversions and
// argument substitution cost several times as much. The texts are exactly the string class's (see
// the tests of the value texts).

// A text made of Latin-1 pieces, in one allocation.
inline QString latin1Text(std::initializer_list<QLatin1String> parts)
{
    int size = 0;
    for (const QLatin1String& part : parts)
        size += part.size();
    if (size == 0)
        return QString::fromLatin1("", 0);
    QString result(size, Qt::Uninitialized);
    QChar* out = result.data();
    for (const QLatin1String& part : parts)
        for (char c : part)
            *out++ = QLatin1Char(c);
    return result;
}

// Room for any number text below: 64 binary digits and a sign, or a double in 'g' form.
struct NumberBuffer
{
    char text[72];
};

// Lower-case, unpadded digits of a value in base 2, 10 or 16. A negative signed value is written as
// a minus sign and its magnitude ("0x-ff" after a prefix), never as a two's complement that would
// read as a huge number.
template <class T> QLatin1String digitsIn(NumberBuffer& buffer, T value, int base)
{
    static_assert(std::is_integral<T>::value, "integers only");
    const auto end = std::to_chars(buffer.text, buffer.text + sizeof buffer.text, value, base).ptr;
    return QLatin1String(buffer.text, static_cast<int>(end - buffer.text));
}

template <class T> QString digits(T value, int base)
{
    NumberBuffer buffer;
    return QString(digitsIn(buffer, value, base));
}

// " " before a unit, when there is one.
inline QLatin1String unitSeparator(const std::string& unit)
{
    return unit.empty() ? QLatin1String() : QLatin1String(" ");
}

// The value text of an integer row for representations other than the check box (3): hex with unit,
// dotted or colon address without unit, decimal with unit.
template <class T> QString integerText(T value, int representation, const std::string& unit)
{
    NumberBuffer buffer;
    switch (representation) {
    case models::pirHexNumber:
        return latin1Text(
            {QLatin1String("0x"), digitsIn(buffer, value, 16), unitSeparator(unit), latin1(unit)});
    case models::pirIPV4Address:
        return dottedText(value);
    case models::pirMACAddress:
        return macText(value);
    default:
        return latin1Text({digitsIn(buffer, value, 10), unitSeparator(unit), latin1(unit)});
    }
}

// A double as the string class formats it by default (QString::arg with 'g' and six significant
// digits: the exponent has at least two digits), with its spellings of zero ("0", also for -0),
// infinities and NaN.
//
// Most values shown have six significant digits or fewer; their shortest round-trip digits (the
// fastest conversion) are the six-digit text, laid out here as 'g' lays it out. Longer values are
// rounded by std::to_chars. Both round the exact value, but one exactly halfway between two texts goes
// away from zero in the string class and to the even digit in std::to_chars; such a value's shortest
// digits are seven, ending in 5, and the string class writes those itself, as it does subnormal values
// (whose shortest digits can be fewer than their six-digit text).
inline QLatin1String qtFloatTextIn(NumberBuffer& buffer, double value)
{
    const QString text = QStringLiteral("%1").arg(value, 0, 'g', -1);
    const int size = std::min(text.size(), static_cast<int>(sizeof buffer.text));
    for (int i = 0; i < size; ++i)
        buffer.text[i] = text.at(i).toLatin1();
    return QLatin1String(buffer.text, size);
}

inline QLatin1String floatTextIn(NumberBuffer& buffer, double value)
{
    if (value == 0)
        return QLatin1String("0");
    if (std::isnan(value))
        return QLatin1String("nan");
    if (std::isinf(value))
        return QLatin1String(value < 0 ? "-inf" : "inf");
    if (std::fabs(value) < std::numeric_limits<double>::min())
        return qtFloatTextIn(buffer, value);

    char shortest[40]; // "-d.dddddddddddddddde-308"
    const char* shortestEnd =
        std::to_chars(shortest, shortest + sizeof shortest, value, std::chars_format::scientific).ptr;
    const char* p = shortest;
    const bool negative = *p == '-';
    if (negative)
        ++p;
    char mantissa[20];
    int digitCount = 0;
    for (; p != shortestEnd && *p != 'e'; ++p)
        if (*p != '.')
            mantissa[digitCount++] = *p;
    int exponent = 0;
    std::from_chars(p + 1 + (p[1] == '+'), shortestEnd, exponent);

    if (digitCount > 6) {
        if (digitCount == 7 && mantissa[6] == '5')
            return qtFloatTextIn(buffer, value);
        const auto end =
            std::to_chars(buffer.text, buffer.text + sizeof buffer.text, value, std::chars_format::general, 6)
                .ptr;
        return QLatin1String(buffer.text, static_cast<int>(end - buffer.text));
    }

    char* out = buffer.text;
    if (negative)
        *out++ = '-';
    if (exponent < -4 || exponent >= 6) {
        *out++ = mantissa[0];
        if (digitCount > 1) {
            *out++ = '.';
            for (int i = 1; i < digitCount; ++i)
                *out++ = mantissa[i];
        }
        *out++ = 'e';
        *out++ = exponent < 0 ? '-' : '+';
        const int magnitude = exponent < 0 ? -exponent : exponent;
        if (magnitude < 10)
            *out++ = '0';
        out = std::to_chars(out, buffer.text + sizeof buffer.text, magnitude).ptr;
    } else if (exponent < 0) {
        *out++ = '0';
        *out++ = '.';
        for (int i = -1; i > exponent; --i)
            *out++ = '0';
        for (int i = 0; i < digitCount; ++i)
            *out++ = mantissa[i];
    } else {
        for (int i = 0; i <= exponent; ++i)
            *out++ = i < digitCount ? mantissa[i] : '0';
        if (digitCount > exponent + 1) {
            *out++ = '.';
            for (int i = exponent + 1; i < digitCount; ++i)
                *out++ = mantissa[i];
        }
    }
    return QLatin1String(buffer.text, static_cast<int>(out - buffer.text));
}

inline QString floatText(double value)
{
    NumberBuffer buffer;
    return QString(floatTextIn(buffer, value));
}

// Sets a check box through the tree's callback, and only when the state really changes.
inline void writeCheckState(const boost::shared_ptr<models::MvParametersEntryNode>& entry, bool current,
                            bool wanted, const boost::any& value)
{
    if (!entry || current == wanted)
        return;
    models::writeThroughCallback(entry, value);
}

} // namespace rows
} // namespace core
} // namespace vorn
