#pragma once

// The behaviour that the signed and the unsigned integer rows share, over the parameter node class
// (MvParametersIntegerNode or MvParametersUInt64Node) and its value type.

#include <vorn/models/private/ParameterRowSupport.h>

#include <QIcon>

namespace vorn {
namespace core {
namespace rows {

template <class Node> const Node& integerOf(const boost::shared_ptr<GenericModelNode>& node)
{
    return nodeAs<Node>(node);
}

inline bool isCheckBox(int representation)
{
    return representation == models::pirBoolean;
}

// The value column's text, or an invalid variant where the row shows only its check box.
template <class Node> QVariant integerDisplay(const boost::shared_ptr<GenericModelNode>& node)
{
    const Node& n = integerOf<Node>(node);
    if (!n.getDataValid())
        return QString();
    if (isCheckBox(n.getRepresentation()))
        return QVariant();
    return integerText(n.getNodeValue(), n.getRepresentation(), n.getUnit());
}

template <class Node> QVariant integerValueFont(const boost::shared_ptr<GenericModelNode>& node)
{
    switch (integerOf<Node>(node).getRepresentation()) {
    case models::pirHexNumber:
    case models::pirIPV4Address:
    case models::pirMACAddress:
        return rowFonts().fixedBold;
    default:
        return rowFonts().bold;
    }
}

template <class Node>
QVariant integerCheckState(const boost::shared_ptr<GenericModelNode>& node, int column, int checkColumn)
{
    if (column != checkColumn)
        return QVariant();
    const Node& n = integerOf<Node>(node);
    if (!n.getDataValid() || !isCheckBox(n.getRepresentation()))
        return QVariant();
    return n.getNodeValue() != 0 ? Qt::Checked : Qt::Unchecked;
}

template <class Node>
bool integerUserCheckable(const boost::shared_ptr<GenericModelNode>& node, int column, int checkColumn)
{
    if (column != checkColumn)
        return false;
    const Node& n = integerOf<Node>(node);
    return n.getDataValid() && isCheckBox(n.getRepresentation());
}

// A tick writes 1 and a cleared box 0, in the node's own value type.
template <class Node>
void integerSetChecked(const boost::shared_ptr<GenericModelNode>& node, Qt::CheckState state)
{
    using T = typename Node::ValueType;
    auto n = boost::static_pointer_cast<Node>(node);
    const bool wanted = state == Qt::Checked;
    writeCheckState(n, n->getNodeValue() != 0, wanted, boost::any(static_cast<T>(wanted ? 1 : 0)));
}

} // namespace rows
} // namespace core
} // namespace vorn
