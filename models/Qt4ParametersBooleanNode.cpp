#include "models/Qt4ParametersBooleanNode.h"

#include "models/ParameterRowSupport.h"
#include "models/RowFactory.h"

#include "host/MvParametersBooleanNode.h"

#include <QIcon>

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

namespace {
boost::shared_ptr<models::MvParametersBooleanNode> booleanOf(const boost::shared_ptr<GenericModelNode>& node)
{
    return boost::static_pointer_cast<models::MvParametersBooleanNode>(node);
}
} // namespace

void Qt4ParametersBooleanNode::postInsert()
{
    Qt4GenericModelNode::postInsert();
    m_icon = QIcon(QStringLiteral(":/parameters/boolean.png"));
}

void Qt4ParametersBooleanNode::setCheckedState(int, Qt::CheckState state)
{
    auto b = booleanOf(node());
    const bool wanted = state == Qt::Checked;
    rows::writeCheckState(b, b->getValueSet(), wanted, boost::any(wanted));
}

// No text beside the check box; with invalid data the cell is empty.
QVariant Qt4ParametersBooleanNode::dataDisplayRole(int column)
{
    if (column != 1)
        return Qt4ParametersModelNode::dataDisplayRole(column);
    return booleanOf(node())->getDataValid() ? QVariant() : QVariant(QString());
}

QVariant Qt4ParametersBooleanNode::dataDecorationRole(int column)
{
    return column == 0 ? m_icon : QVariant();
}

QVariant Qt4ParametersBooleanNode::dataCheckStateRole(int column)
{
    auto b = booleanOf(node());
    if (column != 1 || !b->getDataValid())
        return QVariant();
    return b->getValueSet() ? Qt::Checked : Qt::Unchecked;
}

bool Qt4ParametersBooleanNode::isUserCheckable(int column)
{
    return column == 1 && booleanOf(node())->getDataValid();
}

} // namespace core
} // namespace vorn
