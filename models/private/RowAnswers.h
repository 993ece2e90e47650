#pragma once

// The answers that the base rows and the models of every family give alike: the name and tool tip, the
// value column's access rule, the children, the check box's write, the styled header.

#include <vorn/models/private/RowText.h>

#include <vorn/host/MvParametersModel.h>
#include <vorn/resources/ParameterLook.h>

#include <QStringList>
#include <QVariant>

#include <boost/any.hpp>

namespace vorn {
namespace core {
namespace rows {

using look::boldFont;
using look::fixedBoldFont;
using look::rowFonts;
using look::typeIcon;

// The parameter node behind a row, as its own class. Rows read their node on every data() call; a
// reference costs nothing where a shared pointer copy costs two atomic operations.
template <class Node> const Node& nodeAs(const boost::shared_ptr<GenericModelNode>& node)
{
    return static_cast<const Node&>(*node);
}

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

// Sets a check box through the tree's callback, and only when the state really changes.
inline void writeCheckState(const boost::shared_ptr<GenericModelNode>& node, bool current, bool wanted,
                            const boost::any& value)
{
    if (!node || current == wanted)
        return;
    models::writeThroughCallback(boost::static_pointer_cast<models::MvParametersEntryNode>(node), value);
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
