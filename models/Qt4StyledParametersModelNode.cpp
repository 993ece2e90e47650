#include <vorn/models/Qt4StyledParametersModelNode.h>

#include <vorn/models/Qt4ParametersCommandNode.h>
#include <vorn/models/Qt4StyledParametersBooleanNode.h>
#include <vorn/models/Qt4StyledParametersCategoryNode.h>
#include <vorn/models/Qt4StyledParametersEntryNode.h>
#include <vorn/models/Qt4StyledParametersEnumerationNode.h>
#include <vorn/models/Qt4StyledParametersFloatNode.h>
#include <vorn/models/Qt4StyledParametersIntegerNode.h>
#include <vorn/models/Qt4StyledParametersStringNode.h>
#include <vorn/models/Qt4StyledParametersUInt64Node.h>
#include <vorn/models/private/RowFactory.h>
#include <vorn/models/private/StyledRowSupport.h>

#include <QSize>

namespace vorn {
namespace core {

Qt4StyledParametersModelNode::Qt4StyledParametersModelNode(boost::shared_ptr<GenericModel> model,
                                                           boost::shared_ptr<GenericModelNode> node,
                                                           const boost::any& data)
    : Qt4GenericModelNode(std::move(model), std::move(node), data)
{}

Qt4StyledParametersModelNode::Qt4StyledParametersModelNode(boost::shared_ptr<GenericModel> model,
                                                           boost::shared_ptr<GenericModelNode> node,
                                                           boost::shared_ptr<GenericModelNode> parentNode,
                                                           const boost::any& data)
    : Qt4GenericModelNode(std::move(model), std::move(node), std::move(parentNode), data)
{}

Qt4StyledParametersModelNode::~Qt4StyledParametersModelNode() = default;

boost::shared_ptr<Qt4StyledParametersModelNode>
Qt4StyledParametersModelNode::create(boost::shared_ptr<GenericModel> model,
                                     boost::shared_ptr<GenericModelNode> node, const boost::any& data)
{
    return rows::createRow<Qt4StyledParametersModelNode>(model, node, data);
}

boost::shared_ptr<Qt4StyledParametersModelNode>
Qt4StyledParametersModelNode::create(boost::shared_ptr<GenericModel> model,
                                     boost::shared_ptr<GenericModelNode> node,
                                     boost::shared_ptr<GenericModelNode> parentNode, const boost::any& data)
{
    return rows::createRow<Qt4StyledParametersModelNode>(model, node, parentNode, data);
}

QVariant Qt4StyledParametersModelNode::dataDisplayRole(int column)
{
    return rows::entryName(node(), column);
}

QVariant Qt4StyledParametersModelNode::dataFontRole(int)
{
    return rows::rowFonts().plain;
}

QVariant Qt4StyledParametersModelNode::dataToolTipRole(int)
{
    return rows::entryToolTip(node());
}

QVariant Qt4StyledParametersModelNode::dataSizeHintRole(int)
{
    return QSize(-1, 17);
}

QVariant Qt4StyledParametersModelNode::dataBranchBackgroundRole(int)
{
    return QVariant();
}

bool Qt4StyledParametersModelNode::isEnabled(int column)
{
    return column == 0 || rows::valueEditable(node(), column);
}

bool Qt4StyledParametersModelNode::isReadOnly(int column)
{
    return column == 0 || !rows::valueEditable(node(), column);
}

bool Qt4StyledParametersModelNode::isSelectable(int)
{
    return true;
}

bool Qt4StyledParametersModelNode::isGridEnabled(int)
{
    return true;
}

void Qt4StyledParametersModelNode::setupChildren()
{
    if (node())
        Qt4GenericModelNode::setupChildren(rows::childContainerOf(node()));
}

namespace {

struct StyledRows
{
    using Base = Qt4StyledParametersModelNode;
    using Category = Qt4StyledParametersCategoryNode;
    using String = Qt4StyledParametersStringNode;
    using Integer = Qt4StyledParametersIntegerNode;
    using UInt64 = Qt4StyledParametersUInt64Node;
    using Float = Qt4StyledParametersFloatNode;
    using Boolean = Qt4StyledParametersBooleanNode;
    using Command = Qt4ParametersCommandNode; // one command row serves both two-column families
    using Enumeration = Qt4StyledParametersEnumerationNode;
    using Entry = Qt4StyledParametersEntryNode;
};

} // namespace

boost::shared_ptr<Qt4GenericModelNode>
Qt4StyledParametersModelNode::do_create(boost::shared_ptr<GenericModelNode> node,
                                        boost::shared_ptr<GenericModelNode> parent, const boost::any& data)
{
    return rows::createRowFor<StyledRows>(node, genericModel(), node, parent, data);
}

boost::shared_ptr<Qt4GenericModelNode>
Qt4StyledParametersModelNode::do_create(boost::shared_ptr<GenericModelNode> node, const boost::any& data)
{
    return rows::createRowFor<StyledRows>(node, genericModel(), node, data);
}

} // namespace core
} // namespace vorn
