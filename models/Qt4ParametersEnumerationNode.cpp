#include "models/Qt4ParametersEnumerationNode.h"

#include "models/ParameterRowSupport.h"
#include "models/RowFactory.h"

#include "host/MvParametersEnumerationNode.h"

#include <QIcon>

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
    m_icon = QIcon(QStringLiteral(":/parameters/enumeration.png"));
}

// A value that matches no entry is shown with its number rather than hidden: it tells the user the
// device reports something the description does not know.
QVariant Qt4ParametersEnumerationNode::dataDisplayRole(int column)
{
    if (column != 1)
        return Qt4ParametersModelNode::dataDisplayRole(column);
    auto e = boost::static_pointer_cast<models::MvParametersEnumerationNode>(node());
    if (!e->getDataValid())
        return QString();
    if (auto entry = e->getEnumEntryNodesEntry(e->getNodeValue()))
        return QStringLiteral("%1").arg(rows::text(entry->getDisplayName()));
    return QStringLiteral("illegal enum value (%1)").arg(e->getNodeIntValue());
}

QVariant Qt4ParametersEnumerationNode::dataDecorationRole(int column)
{
    return column == 0 ? m_icon : QVariant();
}

} // namespace core
} // namespace vorn
