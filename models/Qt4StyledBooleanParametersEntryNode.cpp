#include <vorn/models/Qt4StyledBooleanParametersEntryNode.h>

#include <vorn/models/private/RowFactory.h>

#include <QColor>

namespace vorn {
namespace core {

Qt4StyledBooleanParametersEntryNode::~Qt4StyledBooleanParametersEntryNode() = default;

boost::shared_ptr<Qt4StyledBooleanParametersEntryNode>
Qt4StyledBooleanParametersEntryNode::create(boost::shared_ptr<GenericModel> model,
                                            boost::shared_ptr<GenericModelNode> node, const boost::any& data)
{
    return rows::createRow<Qt4StyledBooleanParametersEntryNode>(model, node, data);
}

boost::shared_ptr<Qt4StyledBooleanParametersEntryNode> Qt4StyledBooleanParametersEntryNode::create(
    boost::shared_ptr<GenericModel> model, boost::shared_ptr<GenericModelNode> node,
    boost::shared_ptr<GenericModelNode> parentNode, const boost::any& data)
{
    return rows::createRow<Qt4StyledBooleanParametersEntryNode>(model, node, parentNode, data);
}

void Qt4StyledBooleanParametersEntryNode::postInsert()
{
    Qt4GenericModelNode::postInsert();
    m_foreground = QColor(Qt::red);
}

QVariant Qt4StyledBooleanParametersEntryNode::dataForegroundRole(int column)
{
    return column == 0 ? m_foreground : QVariant();
}

} // namespace core
} // namespace vorn
