#pragma once

// What the value column of each kind's rows shows: texts, fonts and check boxes, in the plain and the
// styled look. The numbers are the parameter library's texts (vorn/host/ParameterText.h).

#include <vorn/models/IntegerDetails.h>
#include <vorn/models/IntegerViewModeKey.h>
#include <vorn/models/private/RowAnswers.h>

#include <vorn/host/MovaniApplication.h>
#include <vorn/host/MvParametersBooleanNode.h>
#include <vorn/host/MvParametersEnumerationNode.h>
#include <vorn/host/MvParametersFloatNode.h>
#include <vorn/host/ParameterText.h>

#include <QStringBuilder>

namespace vorn {
namespace core {
namespace rows {

using models::texts::NumberBuffer;

template <class T> QLatin1String digitsLatin1(NumberBuffer& buffer, T value, int base)
{
    return latin1(models::texts::digitsIn(buffer, value, base));
}

inline QLatin1String floatLatin1(NumberBuffer& buffer, double value)
{
    return latin1(models::texts::floatIn(buffer, value));
}

inline bool isCheckBox(int representation)
{
    return representation == models::pirBoolean;
}

inline bool isFixedWidth(int representation)
{
    return representation == models::pirHexNumber || representation == models::pirIPV4Address ||
           representation == models::pirMACAddress;
}

// An integer for every representation but the check box: "0x" hex with the unit, the dotted or colon
// address without unit, else decimal with the unit.
template <class T> QString integerText(T value, int representation, const std::string& unit)
{
    NumberBuffer buffer;
    switch (representation) {
    case models::pirHexNumber:
        return latin1Text(
            {QLatin1String("0x"), digitsLatin1(buffer, value, 16), unitSeparator(unit), latin1(unit)});
    case models::pirIPV4Address:
        return latin1Text({latin1(models::texts::dottedIn(buffer, static_cast<unsigned long long>(value)))});
    case models::pirMACAddress:
        return latin1Text({latin1(models::texts::macIn(buffer, static_cast<unsigned long long>(value)))});
    default:
        return latin1Text({digitsLatin1(buffer, value, 10), unitSeparator(unit), latin1(unit)});
    }
}

// ----- integers -----

// The plain family's value text, or an invalid variant where the row shows only its check box.
template <class Node> QVariant integerDisplay(const boost::shared_ptr<GenericModelNode>& node)
{
    const Node& n = nodeAs<Node>(node);
    if (!n.getDataValid())
        return QString();
    if (isCheckBox(n.getRepresentation()))
        return QVariant();
    return integerText(n.getNodeValue(), n.getRepresentation(), n.getUnit());
}

// Hex and addresses read best fixed-width; the plain family writes values bold, the styled one plain.
template <class Node> QVariant integerValueFont(const boost::shared_ptr<GenericModelNode>& node, bool styled)
{
    if (isFixedWidth(nodeAs<Node>(node).getRepresentation()))
        return rowFonts().fixedBold;
    return styled ? rowFonts().plain : rowFonts().bold;
}

template <class Node>
QVariant integerCheckState(const boost::shared_ptr<GenericModelNode>& node, int column, int checkColumn)
{
    const Node& n = nodeAs<Node>(node);
    if (column != checkColumn || !n.getDataValid() || !isCheckBox(n.getRepresentation()))
        return QVariant();
    return n.getNodeValue() != 0 ? Qt::Checked : Qt::Unchecked;
}

template <class Node>
bool integerUserCheckable(const boost::shared_ptr<GenericModelNode>& node, int column, int checkColumn)
{
    const Node& n = nodeAs<Node>(node);
    return column == checkColumn && n.getDataValid() && isCheckBox(n.getRepresentation());
}

// A tick writes 1 and a cleared box 0, in the node's own value type.
template <class Node>
void integerSetChecked(const boost::shared_ptr<GenericModelNode>& node, Qt::CheckState state)
{
    using T = typename Node::ValueType;
    const bool wanted = state == Qt::Checked;
    writeCheckState(node, nodeAs<Node>(node).getNodeValue() != 0, wanted,
                    boost::any(static_cast<T>(wanted ? 1 : 0)));
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

// The styled family's value text. Plain numbers follow the parameter's own view mode, or the host's
// setting when the parameter leaves it open, behind the field index; they are noted for the details
// tool tip.
template <class Node>
QVariant styledIntegerDisplay(const boost::shared_ptr<GenericModelNode>& node,
                              IntegerDetails<typename Node::ValueType>& details)
{
    const Node& n = nodeAs<Node>(node);
    if (!n.getDataValid())
        return QString();
    const auto value = n.getNodeValue();
    if (isCheckBox(n.getRepresentation()))
        return QVariant();
    if (isFixedWidth(n.getRepresentation()))
        return integerText(value, n.getRepresentation(), n.getUnit());
    details.displayed(value, n.getIsField(), n.getCurrentFieldIndex());
    int viewMode = n.getViewMode();
    if (viewMode == -1)
        viewMode = hostIntegerViewMode();
    const int base = viewMode == 1 ? 16 : viewMode == 2 ? 2 : 10;
    NumberBuffer number;
    NumberBuffer index;
    const bool field = n.getIsField();
    const std::string& unit = n.getUnit();
    return latin1Text({QLatin1String(field ? "[" : ""),
                       field ? digitsLatin1(index, n.getCurrentFieldIndex(), 10) : QLatin1String(),
                       QLatin1String(field ? "] " : ""),
                       QLatin1String(base == 16  ? "0x"
                                     : base == 2 ? "0b"
                                                 : ""),
                       digitsLatin1(number, value, base), unitSeparator(unit), latin1(unit)});
}

// Rows of the details tool tip, in the order the row class shows them.
enum class IndexRowPlace { AfterName, BeforeName };

template <class T>
QString integerDetailsToolTip(const std::string& name, bool isField, int fieldIndex, T value,
                              IndexRowPlace place)
{
    // One buffer a number: the builder reads them all at the end.
    NumberBuffer index, decimal, hex, binary;
    const QString nameRow =
        QLatin1String("<tr><td><b>Name:</b></td><td>") % latin1(name) % QLatin1String("</td></tr>");
    const QString indexRow = isField
                                 ? QString(QLatin1String("<tr><td><b>Index:</b></td><td>") %
                                           digitsLatin1(index, fieldIndex, 10) % QLatin1String("</td></tr>"))
                                 : QString();
    return QLatin1String("<b><u>Integer Parameter Details</u></b><br><table>") %
           (place == IndexRowPlace::AfterName ? nameRow : indexRow) %
           (place == IndexRowPlace::AfterName ? indexRow : nameRow) %
           QLatin1String("<tr><td><b>Decimal:</b></td><td>") % digitsLatin1(decimal, value, 10) %
           QLatin1String("</td></tr>") % QLatin1String("<tr><td><b>Hexadecimal:</b></td><td>0x") %
           digitsLatin1(hex, value, 16) % QLatin1String("</td></tr>") %
           QLatin1String("<tr><td><b>Binary:</b></td><td>0b") % digitsLatin1(binary, value, 2) %
           QLatin1String("</td></tr>") % QLatin1String("</table>");
}

// ----- floats, enumerations, booleans, strings -----

// The float's value with its unit; the styled family puts the field index in front.
inline QVariant floatDisplay(const boost::shared_ptr<GenericModelNode>& node, bool withFieldIndex)
{
    const auto& f = nodeAs<models::MvParametersFloatNode>(node);
    if (!f.getDataValid())
        return QString();
    const std::string& unit = f.getUnit();
    const bool field = withFieldIndex && f.getIsField();
    NumberBuffer number;
    NumberBuffer index;
    return latin1Text({QLatin1String(field ? "[" : ""),
                       field ? digitsLatin1(index, f.getCurrentFieldIndex(), 10) : QLatin1String(),
                       QLatin1String(field ? "] " : ""), floatLatin1(number, f.getNodeValue()),
                       unitSeparator(unit), latin1(unit)});
}

// The display name of the current entry. A value that matches no entry is shown with its number
// rather than hidden: the device reports something its description does not know.
inline QVariant enumerationDisplay(const boost::shared_ptr<GenericModelNode>& node)
{
    const auto& e = nodeAs<models::MvParametersEnumerationNode>(node);
    if (!e.getDataValid())
        return QString();
    if (auto entry = e.getEnumEntryNodesEntry(e.getNodeValue()))
        return text(entry->getDisplayName());
    return QStringLiteral("illegal enum value (%1)").arg(e.getNodeIntValue());
}

inline const models::MvParametersBooleanNode& booleanAt(const boost::shared_ptr<GenericModelNode>& node)
{
    return nodeAs<models::MvParametersBooleanNode>(node);
}

inline QVariant booleanCheckState(const boost::shared_ptr<GenericModelNode>& node, int column,
                                  int checkColumn)
{
    const auto& b = booleanAt(node);
    if (column != checkColumn || !b.getDataValid())
        return QVariant();
    return b.getValueSet() ? Qt::Checked : Qt::Unchecked;
}

inline void booleanSetChecked(const boost::shared_ptr<GenericModelNode>& node, Qt::CheckState state)
{
    const bool wanted = state == Qt::Checked;
    writeCheckState(node, booleanAt(node).getValueSet(), wanted, boost::any(wanted));
}

} // namespace rows
} // namespace core
} // namespace vorn
