#include <vorn/models/Qt4StyledParametersBooleanNode.h>

#include <vorn/models/private/RowFactory.h>
#include <vorn/models/private/ValueRowSupport.h>

namespace vorn {
namespace core {

Qt4StyledParametersBooleanNode::~Qt4StyledParametersBooleanNode() = default;

boost::shared_ptr<Qt4StyledParametersBooleanNode>
Qt4StyledParametersBooleanNode::create(boost::shared_ptr<GenericModel> model,
                                       boost::shared_ptr<GenericModelNode> node, const boost::any& data)
{
    return rows::createRow<Qt4StyledParametersBooleanNode>(model, node, data);
}

boost::shared_ptr<Qt4StyledParametersBooleanNode>
Qt4StyledParametersBooleanNode::create(boost::shared_ptr<GenericModel> model,
                                       boost::shared_ptr<GenericModelNode> node,
                                       boost::shared_ptr<GenericModelNode> parentNode, const boost::any& data)
{
    return rows::createRow<Qt4StyledParametersBooleanNode>(model, node, parentNode, data);
}

void Qt4StyledParametersBooleanNode::postInsert()
{
    Qt4GenericModelNode::postInsert();
    m_icon = rows::typeIcon(":/parameters/boolean.png");
}

void Qt4StyledParametersBooleanNode::setCheckedState(int, Qt::CheckState state)
{
    rows::booleanSetChecked(node(), state);
}

QVariant Qt4StyledParametersBooleanNode::dataDisplayRole(int column)
{
    if (column != 1)
        return Qt4StyledParametersModelNode::dataDisplayRole(column);
    return rows::booleanDisplay(node());
}

QVariant Qt4StyledParametersBooleanNode::dataDecorationRole(int column)
{
    return column == 0 ? m_icon : QVariant();
}

QVariant Qt4StyledParametersBooleanNode::dataCheckStateRole(int column)
{
    return rows::booleanCheckState(node(), column, 1);
}

bool Qt4StyledParametersBooleanNode::isUserCheckable(int column)
{
    return column == 1 && rows::booleanAt(node()).getDataValid();
}

} // namespace core
} // namespace vorn
