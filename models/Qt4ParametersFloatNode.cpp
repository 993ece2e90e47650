#include <vorn/models/Qt4ParametersFloatNode.h>

#include <vorn/models/private/RowFactory.h>
#include <vorn/models/private/ValueRowSupport.h>

#include <vorn/host/MvParametersFloatNode.h>

namespace vorn {
namespace core {

Qt4ParametersFloatNode::~Qt4ParametersFloatNode() = default;

boost::shared_ptr<Qt4ParametersFloatNode>
Qt4ParametersFloatNode::create(boost::shared_ptr<GenericModel> model,
                               boost::shared_ptr<GenericModelNode> node, const boost::any& data)
{
    return rows::createRow<Qt4ParametersFloatNode>(model, node, data);
}

boost::shared_ptr<Qt4ParametersFloatNode>
Qt4ParametersFloatNode::create(boost::shared_ptr<GenericModel> model,
                               boost::shared_ptr<GenericModelNode> node,
                               boost::shared_ptr<GenericModelNode> parentNode, const boost::any& data)
{
    return rows::createRow<Qt4ParametersFloatNode>(model, node, parentNode, data);
}

void Qt4ParametersFloatNode::postInsert()
{
    Qt4GenericModelNode::postInsert();
    m_icon = rows::typeIcon(":/parameters/float.png");
}

QVariant Qt4ParametersFloatNode::dataDisplayRole(int column)
{
    if (column != 1)
        return Qt4ParametersModelNode::dataDisplayRole(column);
    return rows::floatDisplay(node(), false);
}

QVariant Qt4ParametersFloatNode::dataDecorationRole(int column)
{
    return column == 0 ? m_icon : QVariant();
}

} // namespace core
} // namespace vorn
