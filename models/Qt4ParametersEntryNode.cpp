#include <vorn/models/Qt4ParametersEntryNode.h>

#include <vorn/models/private/ParameterRowSupport.h>
#include <vorn/models/private/RowFactory.h>

#include <QColor>

namespace vorn {
namespace core {

Qt4ParametersEntryNode::~Qt4ParametersEntryNode() = default;

boost::shared_ptr<Qt4ParametersEntryNode>
Qt4ParametersEntryNode::create(boost::shared_ptr<GenericModel> model,
                               boost::shared_ptr<GenericModelNode> node, const boost::any& data)
{
    return rows::createRow<Qt4ParametersEntryNode>(model, node, data);
}

boost::shared_ptr<Qt4ParametersEntryNode>
Qt4ParametersEntryNode::create(boost::shared_ptr<GenericModel> model,
                               boost::shared_ptr<GenericModelNode> node,
                               boost::shared_ptr<GenericModelNode> parentNode, const boost::any& data)
{
    return rows::createRow<Qt4ParametersEntryNode>(model, node, parentNode, data);
}

void Qt4ParametersEntryNode::postInsert()
{
    Qt4GenericModelNode::postInsert();
    m_foreground = QColor(Qt::red);
}

QVariant Qt4ParametersEntryNode::dataForegroundRole(int column)
{
    return column == 0 ? m_foreground : QVariant();
}

} // namespace core
} // namespace vorn
