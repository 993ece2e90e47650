#include <vorn/models/Qt4StyledBooleanParametersModelNode.h>

#include <vorn/models/Qt4StyledBooleanParametersBooleanNode.h>
#include <vorn/models/Qt4StyledBooleanParametersCategoryNode.h>
#include <vorn/models/Qt4StyledBooleanParametersEntryNode.h>
#include <vorn/models/private/RowFactory.h>
#include <vorn/models/private/StyledRowSupport.h>

#include <QSize>

namespace vorn {
namespace core {

using namespace models;

Qt4StyledBooleanParametersModelNode::Qt4StyledBooleanParametersModelNode(
    boost::shared_ptr<GenericModel> model, boost::shared_ptr<GenericModelNode> node, const boost::any& data)
    : Qt4GenericModelNode(std::move(model), std::move(node), data)
{}

Qt4StyledBooleanParametersModelNode::Qt4StyledBooleanParametersModelNode(
    boost::shared_ptr<GenericModel> model, boost::shared_ptr<GenericModelNode> node,
    boost::shared_ptr<GenericModelNode> parentNode, const boost::any& data)
    : Qt4GenericModelNode(std::move(model), std::move(node), std::move(parentNode), data)
{}

Qt4StyledBooleanParametersModelNode::~Qt4StyledBooleanParametersModelNode() = default;

boost::shared_ptr<Qt4StyledBooleanParametersModelNode>
Qt4StyledBooleanParametersModelNode::create(boost::shared_ptr<GenericModel> model,
                                            boost::shared_ptr<GenericModelNode> node, const boost::any& data)
{
    return rows::createRow<Qt4StyledBooleanParametersModelNode>(model, node, data);
}

boost::shared_ptr<Qt4StyledBooleanParametersModelNode> Qt4StyledBooleanParametersModelNode::create(
    boost::shared_ptr<GenericModel> model, boost::shared_ptr<GenericModelNode> node,
    boost::shared_ptr<GenericModelNode> parentNode, const boost::any& data)
{
    return rows::createRow<Qt4StyledBooleanParametersModelNode>(model, node, parentNode, data);
}

QVariant Qt4StyledBooleanParametersModelNode::dataDisplayRole(int column)
{
    return rows::entryName(node(), column);
}

QVariant Qt4StyledBooleanParametersModelNode::dataFontRole(int)
{
    return rows::rowFonts().plain;
}

QVariant Qt4StyledBooleanParametersModelNode::dataToolTipRole(int)
{
    return rows::entryToolTip(node());
}

QVariant Qt4StyledBooleanParametersModelNode::dataSizeHintRole(int)
{
    return QSize(-1, 16);
}

QVariant Qt4StyledBooleanParametersModelNode::dataBranchBackgroundRole(int)
{
    return QVariant();
}

bool Qt4StyledBooleanParametersModelNode::isEnabled(int column)
{
    return column == 0 || rows::valueEditable(node(), column);
}

bool Qt4StyledBooleanParametersModelNode::isReadOnly(int column)
{
    return column == 0 || !rows::valueEditable(node(), column);
}

bool Qt4StyledBooleanParametersModelNode::isSelectable(int)
{
    return true;
}

bool Qt4StyledBooleanParametersModelNode::isGridEnabled(int)
{
    return true;
}

void Qt4StyledBooleanParametersModelNode::setupChildren()
{
    if (node())
        Qt4GenericModelNode::setupChildren(rows::childContainerOf(node()));
}

namespace {

// Categories, booleans and plain entries only: the framework leaves out every other kind, and all
// below it.
template <class... Args>
boost::shared_ptr<Qt4GenericModelNode> createEventRow(const boost::shared_ptr<GenericModelNode>& node,
                                                      const Args&... args)
{
    if (!node)
        return boost::shared_ptr<Qt4GenericModelNode>();
    const std::uint32_t type = node->typeId();
    if (type == MvParametersCategoryNode::typeId())
        return Qt4StyledBooleanParametersCategoryNode::create(args...);
    if (type == MvParametersBooleanNode::typeId())
        return Qt4StyledBooleanParametersBooleanNode::create(args...);
    if (type == MvParametersEntryNode::typeId())
        return Qt4StyledBooleanParametersEntryNode::create(args...);
    return boost::shared_ptr<Qt4GenericModelNode>();
}

} // namespace

boost::shared_ptr<Qt4GenericModelNode>
Qt4StyledBooleanParametersModelNode::do_create(boost::shared_ptr<GenericModelNode> node,
                                               boost::shared_ptr<GenericModelNode> parent,
                                               const boost::any& data)
{
    return createEventRow(node, genericModel(), node, parent, data);
}

boost::shared_ptr<Qt4GenericModelNode>
Qt4StyledBooleanParametersModelNode::do_create(boost::shared_ptr<GenericModelNode> node,
                                               const boost::any& data)
{
    return createEventRow(node, genericModel(), node, data);
}

} // namespace core
} // namespace vorn
