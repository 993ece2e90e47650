#include <vorn/models/Qt4StyledParametersIntegerNode.h>

#include <vorn/models/private/RowFactory.h>
#include <vorn/models/private/StyledRowSupport.h>

#include <vorn/host/MvParametersIntegerNode.h>

namespace vorn {
namespace core {

Qt4StyledParametersIntegerNode::~Qt4StyledParametersIntegerNode() = default;

boost::shared_ptr<Qt4StyledParametersIntegerNode>
Qt4StyledParametersIntegerNode::create(boost::shared_ptr<GenericModel> model,
                                       boost::shared_ptr<GenericModelNode> node, const boost::any& data)
{
    return rows::createRow<Qt4StyledParametersIntegerNode>(model, node, data);
}

boost::shared_ptr<Qt4StyledParametersIntegerNode>
Qt4StyledParametersIntegerNode::create(boost::shared_ptr<GenericModel> model,
                                       boost::shared_ptr<GenericModelNode> node,
                                       boost::shared_ptr<GenericModelNode> parentNode, const boost::any& data)
{
    return rows::createRow<Qt4StyledParametersIntegerNode>(model, node, parentNode, data);
}

using models::MvParametersIntegerNode;

void Qt4StyledParametersIntegerNode::postInsert()
{
    Qt4GenericModelNode::postInsert();
    m_icon = rows::typeIcon(":/parameters/integer.png");
}

void Qt4StyledParametersIntegerNode::setCheckedState(int, Qt::CheckState state)
{
    rows::integerSetChecked<MvParametersIntegerNode>(node(), state);
}

QVariant Qt4StyledParametersIntegerNode::dataDisplayRole(int column)
{
    if (column != 1)
        return Qt4StyledParametersModelNode::dataDisplayRole(column);
    return rows::styledIntegerDisplay<MvParametersIntegerNode>(node(), m_details);
}

QVariant Qt4StyledParametersIntegerNode::dataDecorationRole(int column)
{
    return column == 0 ? m_icon : QVariant();
}

QVariant Qt4StyledParametersIntegerNode::dataFontRole(int column)
{
    if (column != 1)
        return Qt4StyledParametersModelNode::dataFontRole(column);
    return rows::styledIntegerValueFont<MvParametersIntegerNode>(node());
}

// Empty until the value column has been shown once.
QVariant Qt4StyledParametersIntegerNode::dataToolTipRole(int)
{
    if (!node())
        return QVariant();
    return rows::integerDetails(m_details, rows::integerOf<MvParametersIntegerNode>(node()).getName(),
                                rows::IndexRowPlace::AfterName);
}

QVariant Qt4StyledParametersIntegerNode::dataCheckStateRole(int column)
{
    return rows::integerCheckState<MvParametersIntegerNode>(node(), column, 1);
}

bool Qt4StyledParametersIntegerNode::isUserCheckable(int column)
{
    return rows::integerUserCheckable<MvParametersIntegerNode>(node(), column, 1);
}

} // namespace core
} // namespace vorn
