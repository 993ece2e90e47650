#include <vorn/models/Qt4StyledParametersUInt64Node.h>

#include <vorn/models/private/RowFactory.h>
#include <vorn/models/private/StyledRowSupport.h>

#include <vorn/host/MvParametersUInt64Node.h>

namespace vorn {
namespace core {

Qt4StyledParametersUInt64Node::~Qt4StyledParametersUInt64Node() = default;

boost::shared_ptr<Qt4StyledParametersUInt64Node>
Qt4StyledParametersUInt64Node::create(boost::shared_ptr<GenericModel> model,
                                      boost::shared_ptr<GenericModelNode> node, const boost::any& data)
{
    return rows::createRow<Qt4StyledParametersUInt64Node>(model, node, data);
}

boost::shared_ptr<Qt4StyledParametersUInt64Node>
Qt4StyledParametersUInt64Node::create(boost::shared_ptr<GenericModel> model,
                                      boost::shared_ptr<GenericModelNode> node,
                                      boost::shared_ptr<GenericModelNode> parentNode, const boost::any& data)
{
    return rows::createRow<Qt4StyledParametersUInt64Node>(model, node, parentNode, data);
}

using models::MvParametersUInt64Node;

void Qt4StyledParametersUInt64Node::postInsert()
{
    Qt4GenericModelNode::postInsert();
    m_icon = rows::typeIcon(":/parameters/integer.png");
}

void Qt4StyledParametersUInt64Node::setCheckedState(int, Qt::CheckState state)
{
    rows::integerSetChecked<MvParametersUInt64Node>(node(), state);
}

QVariant Qt4StyledParametersUInt64Node::dataDisplayRole(int column)
{
    if (column != 1)
        return Qt4StyledParametersModelNode::dataDisplayRole(column);
    return rows::styledIntegerDisplay<MvParametersUInt64Node>(node(), m_details);
}

QVariant Qt4StyledParametersUInt64Node::dataDecorationRole(int column)
{
    return column == 0 ? m_icon : QVariant();
}

QVariant Qt4StyledParametersUInt64Node::dataFontRole(int column)
{
    if (column != 1)
        return Qt4StyledParametersModelNode::dataFontRole(column);
    return rows::styledIntegerValueFont<MvParametersUInt64Node>(node());
}

// Empty until the value column has been shown once.
QVariant Qt4StyledParametersUInt64Node::dataToolTipRole(int)
{
    if (!node())
        return QVariant();
    return rows::integerDetails(m_details, rows::integerOf<MvParametersUInt64Node>(node()).getName(),
                                rows::IndexRowPlace::BeforeName);
}

QVariant Qt4StyledParametersUInt64Node::dataCheckStateRole(int column)
{
    return rows::integerCheckState<MvParametersUInt64Node>(node(), column, 1);
}

bool Qt4StyledParametersUInt64Node::isUserCheckable(int column)
{
    return rows::integerUserCheckable<MvParametersUInt64Node>(node(), column, 1);
}

} // namespace core
} // namespace vorn
