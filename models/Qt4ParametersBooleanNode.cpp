#include <vorn/models/Qt4ParametersBooleanNode.h>

#include <vorn/models/private/RowFactory.h>
#include <vorn/models/private/ValueRowSupport.h>

#include <vorn/host/MvParametersBooleanNode.h>

namespace vorn {
namespace core {

Qt4ParametersBooleanNode::~Qt4ParametersBooleanNode() = default;

boost::shared_ptr<Qt4ParametersBooleanNode>
Qt4ParametersBooleanNode::create(boost::shared_ptr<GenericModel> model,
                                 boost::shared_ptr<GenericModelNode> node, const boost::any& data)
{
    return rows::createRow<Qt4ParametersBooleanNode>(model, node, data);
}

boost::shared_ptr<Qt4ParametersBooleanNode>
Qt4ParametersBooleanNode::create(boost::shared_ptr<GenericModel> model,
                                 boost::shared_ptr<GenericModelNode> node,
                                 boost::shared_ptr<GenericModelNode> parentNode, const boost::any& data)
{
    return rows::createRow<Qt4ParametersBooleanNode>(model, node, parentNode, data);
}

void Qt4ParametersBooleanNode::postInsert()
{
    Qt4GenericModelNode::postInsert();
    m_icon = rows::typeIcon(":/parameters/boolean.png");
}

void Qt4ParametersBooleanNode::setCheckedState(int, Qt::CheckState state)
{
    rows::booleanSetChecked(node(), state);
}

QVariant Qt4ParametersBooleanNode::dataDisplayRole(int column)
{
    if (column != 1)
        return Qt4ParametersModelNode::dataDisplayRole(column);
    return rows::booleanDisplay(node());
}

QVariant Qt4ParametersBooleanNode::dataDecorationRole(int column)
{
    return column == 0 ? m_icon : QVariant();
}

QVariant Qt4ParametersBooleanNode::dataCheckStateRole(int column)
{
    return rows::booleanCheckState(node(), column, 1);
}

bool Qt4ParametersBooleanNode::isUserCheckable(int column)
{
    return column == 1 && rows::booleanAt(node()).getDataValid();
}

} // namespace core
} // namespace vorn
