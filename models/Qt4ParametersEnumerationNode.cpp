#include <vorn/models/Qt4ParametersEnumerationNode.h>

#include <vorn/models/private/RowFactory.h>
#include <vorn/models/private/ValueRowSupport.h>

#include <vorn/host/MvParametersEnumerationNode.h>

namespace vorn {
namespace core {

Qt4ParametersEnumerationNode::~Qt4ParametersEnumerationNode() = default;

boost::shared_ptr<Qt4ParametersEnumerationNode>
Qt4ParametersEnumerationNode::create(boost::shared_ptr<GenericModel> model,
                                     boost::shared_ptr<GenericModelNode> node, const boost::any& data)
{
    return rows::createRow<Qt4ParametersEnumerationNode>(model, node, data);
}

boost::shared_ptr<Qt4ParametersEnumerationNode>
Qt4ParametersEnumerationNode::create(boost::shared_ptr<GenericModel> model,
                                     boost::shared_ptr<GenericModelNode> node,
                                     boost::shared_ptr<GenericModelNode> parentNode, const boost::any& data)
{
    return rows::createRow<Qt4ParametersEnumerationNode>(model, node, parentNode, data);
}

void Qt4ParametersEnumerationNode::postInsert()
{
    Qt4GenericModelNode::postInsert();
    m_icon = rows::typeIcon(":/parameters/enumeration.png");
}

QVariant Qt4ParametersEnumerationNode::dataDisplayRole(int column)
{
    if (column != 1)
        return Qt4ParametersModelNode::dataDisplayRole(column);
    return rows::enumerationDisplay(node());
}

QVariant Qt4ParametersEnumerationNode::dataDecorationRole(int column)
{
    return column == 0 ? m_icon : QVariant();
}

} // namespace core
} // namespace vorn
