#pragma once

// Value texts and check boxes of the float, boolean and enumeration rows, shared by the model families.

#include <vorn/models/private/ParameterRowSupport.h>

#include <vorn/host/MvParametersBooleanNode.h>
#include <vorn/host/MvParametersEnumerationNode.h>
#include <vorn/host/MvParametersFloatNode.h>

namespace vorn {
namespace core {
namespace rows {

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
                       field ? digitsIn(index, f.getCurrentFieldIndex(), 10) : QLatin1String(),
                       QLatin1String(field ? "] " : ""), floatTextIn(number, f.getNodeValue()),
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

inline boost::shared_ptr<models::MvParametersBooleanNode>
booleanOf(const boost::shared_ptr<GenericModelNode>& node)
{
    return boost::static_pointer_cast<models::MvParametersBooleanNode>(node);
}

inline const models::MvParametersBooleanNode& booleanAt(const boost::shared_ptr<GenericModelNode>& node)
{
    return nodeAs<models::MvParametersBooleanNode>(node);
}

// No text beside the check box; with invalid data the cell is empty.
inline QVariant booleanDisplay(const boost::shared_ptr<GenericModelNode>& node)
{
    return booleanAt(node).getDataValid() ? QVariant() : QVariant(QString());
}

inline QVariant booleanCheckState(const boost::shared_ptr<GenericModelNode>& node, int column,
                                  int checkColumn)
{
    if (column != checkColumn)
        return QVariant();
    const auto& b = booleanAt(node);
    if (!b.getDataValid())
        return QVariant();
    return b.getValueSet() ? Qt::Checked : Qt::Unchecked;
}

inline void booleanSetChecked(const boost::shared_ptr<GenericModelNode>& node, Qt::CheckState state)
{
    auto b = booleanOf(node);
    const bool wanted = state == Qt::Checked;
    writeCheckState(b, b->getValueSet(), wanted, boost::any(wanted));
}

} // namespace rows
} // namespace core
} // namespace vorn
