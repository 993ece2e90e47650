#include <vorn/models/Qt4ParametersModelNode.h>

#include <vorn/models/Qt4ParametersBooleanNode.h>
#include <vorn/models/Qt4ParametersCategoryNode.h>
#include <vorn/models/Qt4ParametersCommandNode.h>
#include <vorn/models/Qt4ParametersEntryNode.h>
#include <vorn/models/Qt4ParametersEnumerationNode.h>
#include <vorn/models/Qt4ParametersFloatNode.h>
#include <vorn/models/Qt4ParametersIntegerNode.h>
#include <vorn/models/Qt4ParametersStringNode.h>
#include <vorn/models/Qt4ParametersUInt64Node.h>
#include <vorn/models/private/RowAnswers.h>
#include <vorn/models/private/RowFactory.h>

#include <QSize>

#include <boost/make_shared.hpp>

namespace vorn {
namespace core {

using namespace models;

Qt4ParametersModelNode::Qt4ParametersModelNode(boost::shared_ptr<GenericModel> model,
                                               boost::shared_ptr<GenericModelNode> node,
                                               const boost::any& data)
    : Qt4GenericModelNode(std::move(model), std::move(node), data),
      m_values(boost::make_shared<std::array<QVariant, 2>>())
{}

Qt4ParametersModelNode::Qt4ParametersModelNode(boost::shared_ptr<GenericModel> model,
                                               boost::shared_ptr<GenericModelNode> node,
                                               boost::shared_ptr<GenericModelNode> parentNode,
                                               const boost::any& data)
    : Qt4GenericModelNode(std::move(model), std::move(node), std::move(parentNode), data),
      m_values(boost::make_shared<std::array<QVariant, 2>>())
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
    return rows::entryName(node(), column);
}

QVariant Qt4ParametersModelNode::dataFontRole(int column)
{
    return column == 1 ? rows::rowFonts().bold : rows::rowFonts().plain;
}

QVariant Qt4ParametersModelNode::dataToolTipRole(int)
{
    return rows::entryToolTip(node());
}

QVariant Qt4ParametersModelNode::dataSizeHintRole(int)
{
    return QSize(-1, 14);
}

bool Qt4ParametersModelNode::isEnabled(int column)
{
    return column == 0 || rows::valueEditable(node(), column);
}

bool Qt4ParametersModelNode::isReadOnly(int column)
{
    return column == 0 || !rows::valueEditable(node(), column);
}

bool Qt4ParametersModelNode::isSelectable(int)
{
    return true;
}

void Qt4ParametersModelNode::setupChildren()
{
    if (node())
        Qt4GenericModelNode::setupChildren(rows::childContainerOf(node()));
}

namespace {

struct PlainRows
{
    using Base = Qt4ParametersModelNode;
    using Category = Qt4ParametersCategoryNode;
    using String = Qt4ParametersStringNode;
    using Integer = Qt4ParametersIntegerNode;
    using UInt64 = Qt4ParametersUInt64Node;
    using Float = Qt4ParametersFloatNode;
    using Boolean = Qt4ParametersBooleanNode;
    using Command = Qt4ParametersCommandNode;
    using Enumeration = Qt4ParametersEnumerationNode;
    using Entry = Qt4ParametersEntryNode;
};

} // namespace

boost::shared_ptr<Qt4GenericModelNode>
Qt4ParametersModelNode::do_create(boost::shared_ptr<GenericModelNode> node,
                                  boost::shared_ptr<GenericModelNode> parent, const boost::any& data)
{
    return rows::createRowFor<PlainRows>(node, genericModel(), node, parent, data);
}

boost::shared_ptr<Qt4GenericModelNode>
Qt4ParametersModelNode::do_create(boost::shared_ptr<GenericModelNode> node, const boost::any& data)
{
    return rows::createRowFor<PlainRows>(node, genericModel(), node, data);
}

} // namespace core
} // namespace vorn
