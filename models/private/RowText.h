#pragma once

// Texts of the parameter tree as Qt strings. Parameter texts are 8-bit strings in which each byte is one
// Latin-1 character. Value texts are made on every repaint, so they are put together from Latin-1 pieces
// (numbers written by vorn/host/ParameterText.h into buffers on the stack) in one allocation.

#include <QLatin1String>
#include <QString>

#include <initializer_list>
#include <string>
#include <string_view>

namespace vorn {
namespace core {
namespace rows {

inline QLatin1String latin1(std::string_view s)
{
    return QLatin1String(s.data(), static_cast<int>(s.size()));
}

inline QString text(const std::string& s)
{
    return QString::fromLatin1(s.data(), static_cast<int>(s.size()));
}

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

// " " before a unit, when there is one.
inline QLatin1String unitSeparator(const std::string& unit)
{
    return unit.empty() ? QLatin1String() : QLatin1String(" ");
}

} // namespace rows
} // namespace core
} // namespace vorn
