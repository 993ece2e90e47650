#include <vorn/models/Qt4StyledParametersFloatNode.h>

#include <vorn/models/private/RowFactory.h>
#include <vorn/models/private/ValueRowSupport.h>

namespace vorn {
namespace core {

Qt4StyledParametersFloatNode::~Qt4StyledParametersFloatNode() = default;

boost::shared_ptr<Qt4StyledParametersFloatNode>
Qt4StyledParametersFloatNode::create(boost::shared_ptr<GenericModel> model,
                                     boost::shared_ptr<GenericModelNode> node, const boost::any& data)
{
    return rows::createRow<Qt4StyledParametersFloatNode>(model, node, data);
}

boost::shared_ptr<Qt4StyledParametersFloatNode>
Qt4StyledParametersFloatNode::create(boost::shared_ptr<GenericModel> model,
                                     boost::shared_ptr<GenericModelNode> node,
                                     boost::shared_ptr<GenericModelNode> parentNode, const boost::any& data)
{
    return rows::createRow<Qt4StyledParametersFloatNode>(model, node, parentNode, data);
}

void Qt4StyledParametersFloatNode::postInsert()
{
    Qt4GenericModelNode::postInsert();
    m_icon = rows::typeIcon(":/parameters/float.png");
}

QVariant Qt4StyledParametersFloatNode::dataDisplayRole(int column)
{
    if (column != 1)
        return Qt4StyledParametersModelNode::dataDisplayRole(column);
    return rows::floatDisplay(node(), true);
}

QVariant Qt4StyledParametersFloatNode::dataDecorationRole(int column)
{
    return column == 0 ? m_icon : QVariant();
}

} // namespace core
} // namespace vorn
