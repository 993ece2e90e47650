#pragma once

// Helpers shared by the row classes of the three model families: text conversion, the value column's
// access rule, value texts and writes through the tree's callback. Not part of the public interface.

#include "host/GenericModelNode.h"
#include "host/MvParametersModel.h"
#include "host/ParameterEnums.h"

#include <QApplication>
#include <QCoreApplication>
#include <QFont>
#include <QHash>
#include <QIcon>
#include <QString>
#include <QVariant>

#include <boost/any.hpp>

#include <string>

namespace vorn {
namespace core {
namespace rows {

// Parameter texts are 8-bit strings; each byte is one Latin-1 character.
inline QString text(const std::string& s)
{
    return QString::fromLatin1(s.data(), static_cast<int>(s.size()));
}

// " unit" when there is a unit, else nothing.
inline QString unitSuffix(const std::string& unit)
{
    return unit.empty() ? QString() : QStringLiteral(" %1").arg(text(unit));
}

inline QFont boldFont()
{
    QFont font = QApplication::font();
    font.setWeight(75);
    return font;
}

// The type icon at a resource path, loaded once. A QIcon made from a file reads the image to learn its
// sizes, which would dominate building a large model; every row of a kind shares one icon instead.
// The cache goes with the application, before the platform that backs its pixmaps.
inline QIcon typeIcon(const char* path)
{
    static QHash<const char*, QIcon>* cache = nullptr;
    if (!cache) {
        cache = new QHash<const char*, QIcon>();
        qAddPostRoutine([] {
            delete cache;
            cache = nullptr;
        });
    }
    auto it = cache->constFind(path);
    if (it == cache->constEnd())
        it = cache->insert(path, QIcon(QString::fromLatin1(path)));
    return it.value();
}

// The bold fixed-width font of values that read best in columns (hex, addresses, strings). "Courier"
// is asked for first so that systems without "Consolas" still get a fixed-width family.
inline QFont fixedBoldFont()
{
    QFont font = QApplication::font();
    font.setFamily(QStringLiteral("Courier"));
    font.setFamily(QStringLiteral("Consolas"));
    font.setWeight(75);
    return font;
}

// The value column is editable for read/write access, and for read/write-while-valid while the last
// read succeeded.
inline bool valueEditable(const models::MvParametersEntryNode& entry)
{
    if (entry.getAccessMode() == models::peamReadWriteIfValid && entry.getDataValid())
        return true;
    return entry.getAccessMode() == models::peamReadWrite;
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

// Lower-case, unpadded digits of a value in base 2, 10 or 16. A negative signed value is written as
// a minus sign and its magnitude ("0x-ff" after a prefix), never as a two's complement that would
// read as a huge number.
inline QString digits(unsigned long long value, int base)
{
    return QString::number(value, base);
}

inline QString digits(long long value, int base)
{
    if (value >= 0)
        return QString::number(value, base);
    // Negating in unsigned arithmetic keeps the most negative value exact.
    return QLatin1Char('-') + QString::number(0ull - static_cast<unsigned long long>(value), base);
}

template <class T> QString hexText(T value)
{
    return digits(value, 16);
}

// The value text of an integer row for representations other than the check box (3): hex with unit,
// dotted or colon address without unit, decimal with unit.
template <class T> QString integerText(T value, int representation, const std::string& unit)
{
    switch (representation) {
    case models::pirHexNumber:
        return QStringLiteral("0x%1%2").arg(hexText(value), unitSuffix(unit));
    case models::pirIPV4Address:
        return dottedText(value);
    case models::pirMACAddress:
        return macText(value);
    default:
        return QStringLiteral("%1%2").arg(QString::number(value), unitSuffix(unit));
    }
}

// A double as the string class formats it by default: 'g' with six significant digits.
inline QString floatText(double value)
{
    return QStringLiteral("%1").arg(value, 0, 'g', -1);
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
