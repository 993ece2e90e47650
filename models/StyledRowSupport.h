#pragma once

// Behaviour shared by the rows of the styled and the styled boolean model families.

#include "models/IntegerRowSupport.h"

#include "host/MovaniApplication.h"

#include <QStringList>

namespace vorn {
namespace core {
namespace rows {

// The host setting that chooses how integers show when a parameter leaves it open: 0 decimal,
// 1 hexadecimal, 2 binary.
inline const char* integerViewModeKey()
{
    return "gui.preferences.gui.params.integer.viewmode";
}

inline QString fieldPrefix(bool isField, int index)
{
    return isField ? QStringLiteral("[%1] ").arg(index) : QString();
}

// Rows of the details tool tip, in the order the row class shows them.
enum class IndexRowPlace { AfterName, BeforeName };

template <class Node> QString integerDetailsToolTip(const Node& n, IndexRowPlace place)
{
    const QString nameRow =
        QStringLiteral("<tr><td><b>Name:</b></td><td>%1</td></tr>").arg(text(n.getName()));
    const QString indexRow =
        n.getIsField()
            ? QStringLiteral("<tr><td><b>Index:</b></td><td>%1</td></tr>").arg(n.getCurrentFieldIndex())
            : QString();
    const auto value = n.getNodeValue();
    QString result = QStringLiteral("<b><u>Integer Parameter Details</u></b><br><table>");
    result += place == IndexRowPlace::AfterName ? nameRow + indexRow : indexRow + nameRow;
    result += QStringLiteral("<tr><td><b>Decimal:</b></td><td>%1</td></tr>").arg(digits(value, 10));
    result += QStringLiteral("<tr><td><b>Hexadecimal:</b></td><td>0x%1</td></tr>").arg(digits(value, 16));
    result += QStringLiteral("<tr><td><b>Binary:</b></td><td>0b%1</td></tr>").arg(digits(value, 2));
    result += QStringLiteral("</table>");
    return result;
}

// The value text of a styled integer row. Plain numbers follow the parameter's own view mode, or the
// host's setting when the parameter leaves it open, and refresh the details tool tip on the way.
template <class Node>
QVariant styledIntegerDisplay(const boost::shared_ptr<GenericModelNode>& node, IndexRowPlace place,
                              QVariant& toolTip)
{
    auto n = integerOf<Node>(node);
    if (!n->getDataValid())
        return QString();
    const QString suffix = unitSuffix(n->getUnit());
    const auto value = n->getNodeValue();
    switch (n->getRepresentation()) {
    case models::pirBoolean:
        return QVariant();
    case models::pirHexNumber:
        return QStringLiteral("0x%1%2").arg(digits(value, 16), suffix);
    case models::pirIPV4Address:
        return dottedText(value);
    case models::pirMACAddress:
        return macText(value);
    default:
        break;
    }
    toolTip = integerDetailsToolTip(*n, place);
    int viewMode = n->getViewMode();
    if (viewMode == -1)
        viewMode = static_cast<int>(MovaniApplication::getConfigIntEntry(integerViewModeKey(), 0));
    const QString prefix = fieldPrefix(n->getIsField(), n->getCurrentFieldIndex());
    switch (viewMode) {
    case 1:
        return prefix + QStringLiteral("0x%1%2").arg(digits(value, 16), suffix);
    case 2:
        return prefix + QStringLiteral("0b%1%2").arg(digits(value, 2), suffix);
    default:
        return prefix + QStringLiteral("%1%2").arg(digits(value, 10), suffix);
    }
}

// The styled families show plain values in the application font; only hex and addresses use the
// bold fixed-width font.
template <class Node> QVariant styledIntegerValueFont(const boost::shared_ptr<GenericModelNode>& node)
{
    switch (integerOf<Node>(node)->getRepresentation()) {
    case models::pirHexNumber:
    case models::pirIPV4Address:
    case models::pirMACAddress:
        return fixedBoldFont();
    default:
        return QApplication::font();
    }
}

// Answers the styled base rows of both styled families give alike.
inline QVariant styledName(const boost::shared_ptr<GenericModelNode>& node, int column)
{
    if (column != 0 || !node)
        return QVariant();
    return text(boost::static_pointer_cast<models::MvParametersEntryNode>(node)->getDisplayName());
}

inline QVariant styledToolTip(const boost::shared_ptr<GenericModelNode>& node)
{
    if (!node)
        return QVariant();
    return text(boost::static_pointer_cast<models::MvParametersEntryNode>(node)->getToolTip());
}

inline bool styledValueEditable(const boost::shared_ptr<GenericModelNode>& node, int column)
{
    return column != 0 && node &&
           valueEditable(*boost::static_pointer_cast<models::MvParametersEntryNode>(node));
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
