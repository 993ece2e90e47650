#pragma once

// Behaviour shared by the rows of the styled and the styled boolean model families.

#include <vorn/models/IntegerDetails.h>
#include <vorn/models/IntegerViewModeKey.h>
#include <vorn/models/private/IntegerRowSupport.h>

#include <vorn/host/MovaniApplication.h>

#include <QStringList>

namespace vorn {
namespace core {
namespace rows {

// Rows of the details tool tip, in the order the row class shows them.
enum class IndexRowPlace { AfterName, BeforeName };

template <class T>
QString integerDetailsToolTip(const std::string& name, bool isField, int fieldIndex, T value,
                              IndexRowPlace place)
{
    const QString nameRow =
        QLatin1String("<tr><td><b>Name:</b></td><td>") % latin1(name) % QLatin1String("</td></tr>");
    const QString indexRow = isField ? QString(QLatin1String("<tr><td><b>Index:</b></td><td>") %
                                               QString::number(fieldIndex) % QLatin1String("</td></tr>"))
                                     : QString();
    return QLatin1String("<b><u>Integer Parameter Details</u></b><br><table>") %
           (place == IndexRowPlace::AfterName ? nameRow : indexRow) %
           (place == IndexRowPlace::AfterName ? indexRow : nameRow) %
           QLatin1String("<tr><td><b>Decimal:</b></td><td>") % digits(value, 10) %
           QLatin1String("</td></tr>") % QLatin1String("<tr><td><b>Hexadecimal:</b></td><td>0x") %
           digits(value, 16) % QLatin1String("</td></tr>") %
           QLatin1String("<tr><td><b>Binary:</b></td><td>0b") % digits(value, 2) %
           QLatin1String("</td></tr>") % QLatin1String("</table>");
}

// The details tool tip of a styled integer row, made from what its value column showed last.
template <class T>
QVariant integerDetails(IntegerDetails<T>& details, const std::string& name, IndexRowPlace place)
{
    return details.toolTip([&](T value, bool isField, int fieldIndex) {
        return integerDetailsToolTip(name, isField, fieldIndex, value, place);
    });
}

// The host's integer view mode, read again only after the host's settings changed: styled integer
// rows ask on every display of their value. GUI thread only.
inline int hostIntegerViewMode()
{
    static unsigned long long seen = 0;
    static int mode = 0;
    static bool read = false;
    const unsigned long long generation = MovaniApplication::configGeneration();
    if (!read || generation != seen) {
        static const std::string key = integerViewModeKey();
        mode = static_cast<int>(MovaniApplication::getConfigIntEntry(key, 0));
        seen = generation;
        read = true;
    }
    return mode;
}

// The value text of a styled integer row. Plain numbers follow the parameter's own view mode, or the
// host's setting when the parameter leaves it open, and are noted for the details tool tip.
template <class Node>
QVariant styledIntegerDisplay(const boost::shared_ptr<GenericModelNode>& node,
                              IntegerDetails<typename Node::ValueType>& details)
{
    const Node& n = integerOf<Node>(node);
    if (!n.getDataValid())
        return QString();
    const auto value = n.getNodeValue();
    const std::string& unit = n.getUnit();
    NumberBuffer buffer;
    switch (n.getRepresentation()) {
    case models::pirBoolean:
        return QVariant();
    case models::pirHexNumber:
    case models::pirIPV4Address:
    case models::pirMACAddress:
        return integerText(value, n.getRepresentation(), unit);
    default:
        break;
    }
    details.displayed(value, n.getIsField(), n.getCurrentFieldIndex());
    int viewMode = n.getViewMode();
    if (viewMode == -1)
        viewMode = hostIntegerViewMode();
    QLatin1String prefix;
    QLatin1String number;
    switch (viewMode) {
    case 1:
        prefix = QLatin1String("0x");
        number = digitsIn(buffer, value, 16);
        break;
    case 2:
        prefix = QLatin1String("0b");
        number = digitsIn(buffer, value, 2);
        break;
    default:
        number = digitsIn(buffer, value, 10);
        break;
    }
    NumberBuffer indexBuffer;
    const bool field = n.getIsField();
    return latin1Text({QLatin1String(field ? "[" : ""),
                       field ? digitsIn(indexBuffer, n.getCurrentFieldIndex(), 10) : QLatin1String(),
                       QLatin1String(field ? "] " : ""), prefix, number, unitSeparator(unit), latin1(unit)});
}

// The styled families show plain values in the application font; only hex and addresses use the
// bold fixed-width font.
template <class Node> QVariant styledIntegerValueFont(const boost::shared_ptr<GenericModelNode>& node)
{
    switch (integerOf<Node>(node).getRepresentation()) {
    case models::pirHexNumber:
    case models::pirIPV4Address:
    case models::pirMACAddress:
        return rowFonts().fixedBold;
    default:
        return rowFonts().plain;
    }
}

// The bold, left-aligned header the styled models share.
inline QVariant styledHeader(int section, Qt::Orientation orientation, int role, const QStringList& titles)
{
    if (orientation != Qt::Horizontal || section < 0 || section >= titles.size())
        return QVariant();
    switch (role) {
    case Qt::DisplayRole:
        return titles.at(section);
    case Qt::FontRole:
        return boldFont();
    case Qt::TextAlignmentRole:
        return static_cast<int>(Qt::AlignLeft);
    default:
        return QVariant();
    }
}

} // namespace rows
} // namespace core
} // namespace vorn
