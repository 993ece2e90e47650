#include <vorn/models/Qt4ParametersUInt64Node.h>

#include <vorn/models/private/IntegerRowSupport.h>
#include <vorn/models/private/RowFactory.h>

#include <vorn/host/MvParametersUInt64Node.h>

namespace vorn {
namespace core {

using models::MvParametersUInt64Node;

Qt4ParametersUInt64Node::~Qt4ParametersUInt64Node() = default;

boost::shared_ptr<Qt4ParametersUInt64Node>
Qt4ParametersUInt64Node::create(boost::shared_ptr<GenericModel> model,
                                boost::shared_ptr<GenericModelNode> node, const boost::any& data)
{
    return rows::createRow<Qt4ParametersUInt64Node>(model, node, data);
}

boost::shared_ptr<Qt4ParametersUInt64Node>
Qt4ParametersUInt64Node::create(boost::shared_ptr<GenericModel> model,
                                boost::shared_ptr<GenericModelNode> node,
                                boost::shared_ptr<GenericModelNode> parentNode, const boost::any& data)
{
    return rows::createRow<Qt4ParametersUInt64Node>(model, node, parentNode, data);
}

void Qt4ParametersUInt64Node::postInsert()
{
    Qt4GenericModelNode::postInsert();
    m_icon = rows::typeIcon(":/parameters/integer.png");
}

// The framework offers the check box only where isUserCheckable says so; column and representation
// need no second check here.
void Qt4ParametersUInt64Node::setCheckedState(int, Qt::CheckState state)
{
    rows::integerSetChecked<MvParametersUInt64Node>(node(), state);
}

QVariant Qt4ParametersUInt64Node::dataDisplayRole(int column)
{
    if (column != 1)
        return Qt4ParametersModelNode::dataDisplayRole(column);
    return rows::integerDisplay<MvParametersUInt64Node>(node());
}

QVariant Qt4ParametersUInt64Node::dataDecorationRole(int column)
{
    return column == 0 ? m_icon : QVariant();
}

QVariant Qt4ParametersUInt64Node::dataFontRole(int column)
{
    return column == 1 ? rows::integerValueFont<MvParametersUInt64Node>(node()) : rows::rowFonts().plain;
}

QVariant Qt4ParametersUInt64Node::dataCheckStateRole(int column)
{
    return rows::integerCheckState<MvParametersUInt64Node>(node(), column, 1);
}

bool Qt4ParametersUInt64Node::isUserCheckable(int column)
{
    return rows::integerUserCheckable<MvParametersUInt64Node>(node(), column, 1);
}

} // namespace core
} // namespace vorn
