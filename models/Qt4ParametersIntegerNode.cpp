#include <vorn/models/Qt4ParametersIntegerNode.h>

#include <vorn/models/private/IntegerRowSupport.h>
#include <vorn/models/private/RowFactory.h>

#include <vorn/host/MvParametersIntegerNode.h>

namespace vorn {
namespace core {

using models::MvParametersIntegerNode;

Qt4ParametersIntegerNode::~Qt4ParametersIntegerNode() = default;

boost::shared_ptr<Qt4ParametersIntegerNode>
Qt4ParametersIntegerNode::create(boost::shared_ptr<GenericModel> model,
                                 boost::shared_ptr<GenericModelNode> node, const boost::any& data)
{
    return rows::createRow<Qt4ParametersIntegerNode>(model, node, data);
}

boost::shared_ptr<Qt4ParametersIntegerNode>
Qt4ParametersIntegerNode::create(boost::shared_ptr<GenericModel> model,
                                 boost::shared_ptr<GenericModelNode> node,
                                 boost::shared_ptr<GenericModelNode> parentNode, const boost::any& data)
{
    return rows::createRow<Qt4ParametersIntegerNode>(model, node, parentNode, data);
}

void Qt4ParametersIntegerNode::postInsert()
{
    Qt4GenericModelNode::postInsert();
    m_icon = rows::typeIcon(":/parameters/integer.png");
}

// The framework offers the check box only where isUserCheckable says so; column and representation
// need no second check here.
void Qt4ParametersIntegerNode::setCheckedState(int, Qt::CheckState state)
{
    rows::integerSetChecked<MvParametersIntegerNode>(node(), state);
}

QVariant Qt4ParametersIntegerNode::dataDisplayRole(int column)
{
    if (column != 1)
        return Qt4ParametersModelNode::dataDisplayRole(column);
    return rows::integerDisplay<MvParametersIntegerNode>(node());
}

QVariant Qt4ParametersIntegerNode::dataDecorationRole(int column)
{
    return column == 0 ? m_icon : QVariant();
}

QVariant Qt4ParametersIntegerNode::dataFontRole(int column)
{
    return column == 1 ? rows::integerValueFont<MvParametersIntegerNode>(node()) : rows::rowFonts().plain;
}

QVariant Qt4ParametersIntegerNode::dataCheckStateRole(int column)
{
    return rows::integerCheckState<MvParametersIntegerNode>(node(), column, 1);
}

bool Qt4ParametersIntegerNode::isUserCheckable(int column)
{
    return rows::integerUserCheckable<MvParametersIntegerNode>(node(), column, 1);
}

} // namespace core
} // namespace vorn
