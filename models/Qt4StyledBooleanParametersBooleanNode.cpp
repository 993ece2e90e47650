#include <vorn/models/Qt4StyledBooleanParametersBooleanNode.h>

#include <vorn/models/private/ValueTexts.h>

namespace vorn {
namespace core {

Qt4StyledBooleanParametersBooleanNode::~Qt4StyledBooleanParametersBooleanNode() = default;

void Qt4StyledBooleanParametersBooleanNode::postInsert()
{
    Qt4GenericModelNode::postInsert();
    m_icon = rows::typeIcon(":/parameters/boolean.png");
}

// Whatever the column: the model has only the one.
void Qt4StyledBooleanParametersBooleanNode::setCheckedState(int, Qt::CheckState state)
{
    rows::booleanSetChecked(node(), state);
}

QVariant Qt4StyledBooleanParametersBooleanNode::dataDisplayRole(int column)
{
    if (column == 1 && !rows::booleanAt(node()).getDataValid())
        return QString();
    return Qt4StyledBooleanParametersModelNode::dataDisplayRole(column);
}

QVariant Qt4StyledBooleanParametersBooleanNode::dataDecorationRole(int)
{
    return QVariant();
}

QVariant Qt4StyledBooleanParametersBooleanNode::dataFontRole(int column)
{
    const auto& b = rows::booleanAt(node());
    if (column == 0 && b.getDataValid() && b.getValueSet())
        return rows::rowFonts().bold;
    return rows::rowFonts().plain;
}

QVariant Qt4StyledBooleanParametersBooleanNode::dataCheckStateRole(int column)
{
    return rows::booleanCheckState(node(), column, 0);
}

bool Qt4StyledBooleanParametersBooleanNode::isUserCheckable(int)
{
    return true;
}

} // namespace core
} // namespace vorn
