#include "models/Qt4ParametersModelNode.h"

#include "models/ParameterRowSupport.h"
#include "models/Qt4ParametersBooleanNode.h"
#include "models/Qt4ParametersCategoryNode.h"
// command rows: see below
#include "models/Qt4ParametersEntryNode.h"
#include "models/Qt4ParametersEnumerationNode.h"
#include "models/Qt4ParametersFloatNode.h"
#include "models/Qt4ParametersIntegerNode.h"
#include "models/Qt4ParametersStringNode.h"
#include "models/Qt4ParametersUInt64Node.h"
#include "models/RowFactory.h"

#include "host/MvParametersBooleanNode.h"
#include "host/MvParametersCategoryNode.h"
#include "host/MvParametersCommandNode.h"
#include "host/MvParametersEnumerationNode.h"
#include "host/MvParametersFloatNode.h"
#include "host/MvParametersIntegerNode.h"
#include "host/MvParametersStringNode.h"
#include "host/MvParametersUInt64Node.h"

#include <QSize>

namespace vorn {
namespace core {

using namespace models;

Qt4ParametersModelNode::Qt4ParametersModelNode(boost::shared_ptr<GenericModel> model,
                                               boost::shared_ptr<GenericModelNode> node,
                                               const boost::any& data)
    : Qt4GenericModelNode(std::move(model), std::move(node), data), m_values(new std::array<QVariant, 2>())
{}

Qt4ParametersModelNode::Qt4ParametersModelNode(boost::shared_ptr<GenericModel> model,
                                               boost::shared_ptr<GenericModelNode> node,
                                               boost::shared_ptr<GenericModelNode> parentNode,
                                               const boost::any& data)
    : Qt4GenericModelNode(std::move(model), std::move(node), std::move(parentNode), data),
      m_values(new std::array<QVariant, 2>())
{}

Qt4ParametersModelNode::Qt4ParametersModelNode(const Qt4ParametersModelNode& other) = default;

Qt4ParametersModelNode& Qt4ParametersModelNode::operator=(const Qt4ParametersModelNode& other) = default;

Qt4ParametersModelNode::~Qt4ParametersModelNode() = default;

boost::shared_ptr<Qt4ParametersModelNode>
Qt4ParametersModelNode::create(boost::shared_ptr<GenericModel> model,
                               boost::shared_ptr<GenericModelNode> node, const boost::any& data)
{
    return rows::createRow<Qt4ParametersModelNode>(model, node, data);
}

boost::shared_ptr<Qt4ParametersModelNode>
Qt4ParametersModelNode::create(boost::shared_ptr<GenericModel> model,
                               boost::shared_ptr<GenericModelNode> node,
                               boost::shared_ptr<GenericModelNode> parentNode, const boost::any& data)
{
    return rows::createRow<Qt4ParametersModelNode>(model, node, parentNode, data);
}

QVariant Qt4ParametersModelNode::dataDisplayRole(int column)
{
    if (column != 0 || !node())
        return QVariant();
    return rows::text(entry()->getDisplayName());
}

QVariant Qt4ParametersModelNode::dataFontRole(int column)
{
    return column == 1 ? rows::boldFont() : QApplication::font();
}

QVariant Qt4ParametersModelNode::dataToolTipRole(int)
{
    if (!node())
        return QVariant();
    return rows::text(entry()->getToolTip());
}

QVariant Qt4ParametersModelNode::dataSizeHintRole(int)
{
    return QSize(-1, 14);
}

bool Qt4ParametersModelNode::isEnabled(int column)
{
    return column == 0 || (node() && rows::valueEditable(*entry()));
}

bool Qt4ParametersModelNode::isReadOnly(int column)
{
    return column == 0 || !node() || !rows::valueEditable(*entry());
}

bool Qt4ParametersModelNode::isSelectable(int)
{
    return true;
}

void Qt4ParametersModelNode::setupChildren()
{
    if (!node())
        return;
    boost::shared_ptr<GenericModelNode> children = entry()->getChildNodesEntryNode();
    Qt4GenericModelNode::setupChildren(children);
}

namespace {

// The factory's dispatch, shared by both do_create forms: the first class whose type id equals the
// node's own wins, so a node of a subclass that reports an id of its own falls through to the plain row.
template <class... Args>
boost::shared_ptr<Qt4GenericModelNode> createFor(const boost::shared_ptr<GenericModelNode>& node,
                                                 const Args&... args)
{
    if (node) {
        const std::uint32_t type = node->typeId();
        if (type == MvParametersCategoryNode::typeId())
            return Qt4ParametersCategoryNode::create(args...);
        if (type == MvParametersStringNode::typeId())
            return Qt4ParametersStringNode::create(args...);
        if (type == MvParametersIntegerNode::typeId())
            return Qt4ParametersIntegerNode::create(args...);
        if (type == MvParametersUInt64Node::typeId())
            return Qt4ParametersUInt64Node::create(args...);
        if (type == MvParametersFloatNode::typeId())
            return Qt4ParametersFloatNode::create(args...);
        if (type == MvParametersBooleanNode::typeId())
            return Qt4ParametersBooleanNode::create(args...);
        if (type == MvParametersCommandNode::typeId())
            return Qt4ParametersModelNode::create(args...); // TODO command row
        if (type == MvParametersEnumerationNode::typeId())
            return Qt4ParametersEnumerationNode::create(args...);
        if (type == MvParametersEntryNode::typeId())
            return Qt4ParametersEntryNode::create(args...);
    }
    return Qt4ParametersModelNode::create(args...);
}

} // namespace

boost::shared_ptr<Qt4GenericModelNode>
Qt4ParametersModelNode::do_create(boost::shared_ptr<GenericModelNode> node,
                                  boost::shared_ptr<GenericModelNode> parent, const boost::any& data)
{
    return createFor(node, genericModel(), node, parent, data);
}

boost::shared_ptr<Qt4GenericModelNode>
Qt4ParametersModelNode::do_create(boost::shared_ptr<GenericModelNode> node, const boost::any& data)
{
    return createFor(node, genericModel(), node, data);
}

} // namespace core
} // namespace vorn
