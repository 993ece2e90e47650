#include <vorn/models/Qt4StyledParametersEnumerationNode.h>

#include <vorn/models/private/RowFactory.h>
#include <vorn/models/private/ValueRowSupport.h>

namespace vorn {
namespace core {

Qt4StyledParametersEnumerationNode::~Qt4StyledParametersEnumerationNode() = default;

boost::shared_ptr<Qt4StyledParametersEnumerationNode>
Qt4StyledParametersEnumerationNode::create(boost::shared_ptr<GenericModel> model,
                                           boost::shared_ptr<GenericModelNode> node, const boost::any& data)
{
    return rows::createRow<Qt4StyledParametersEnumerationNode>(model, node, data);
}

boost::shared_ptr<Qt4StyledParametersEnumerationNode> Qt4StyledParametersEnumerationNode::create(
    boost::shared_ptr<GenericModel> model, boost::shared_ptr<GenericModelNode> node,
    boost::shared_ptr<GenericModelNode> parentNode, const boost::any& data)
{
    return rows::createRow<Qt4StyledParametersEnumerationNode>(model, node, parentNode, data);
}

void Qt4StyledParametersEnumerationNode::postInsert()
{
    Qt4GenericModelNode::postInsert();
    m_icon = rows::typeIcon(":/parameters/enumeration.png");
}

QVariant Qt4StyledParametersEnumerationNode::dataDisplayRole(int column)
{
    if (column != 1)
        return Qt4StyledParametersModelNode::dataDisplayRole(column);
    return rows::enumerationDisplay(node());
}

QVariant Qt4StyledParametersEnumerationNode::dataDecorationRole(int column)
{
    return column == 0 ? m_icon : QVariant();
}

} // namespace core
} // namespace vorn
