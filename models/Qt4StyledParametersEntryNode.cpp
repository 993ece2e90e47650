#include <vorn/models/Qt4StyledParametersEntryNode.h>

#include <vorn/models/private/RowFactory.h>

#include <QColor>

namespace vorn {
namespace core {

Qt4StyledParametersEntryNode::~Qt4StyledParametersEntryNode() = default;

boost::shared_ptr<Qt4StyledParametersEntryNode>
Qt4StyledParametersEntryNode::create(boost::shared_ptr<GenericModel> model,
                                     boost::shared_ptr<GenericModelNode> node, const boost::any& data)
{
    return rows::createRow<Qt4StyledParametersEntryNode>(model, node, data);
}

boost::shared_ptr<Qt4StyledParametersEntryNode>
Qt4StyledParametersEntryNode::create(boost::shared_ptr<GenericModel> model,
                                     boost::shared_ptr<GenericModelNode> node,
                                     boost::shared_ptr<GenericModelNode> parentNode, const boost::any& data)
{
    return rows::createRow<Qt4StyledParametersEntryNode>(model, node, parentNode, data);
}

void Qt4StyledParametersEntryNode::postInsert()
{
    Qt4GenericModelNode::postInsert();
    m_foreground = QColor(Qt::red);
}

QVariant Qt4StyledParametersEntryNode::dataForegroundRole(int column)
{
    return column == 0 ? m_foreground : QVariant();
}

} // namespace core
} // namespace vorn
