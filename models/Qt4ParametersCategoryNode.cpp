#include <vorn/models/Qt4ParametersCategoryNode.h>

#include <vorn/models/private/RowAnswers.h>

namespace vorn {
namespace core {

Qt4ParametersCategoryNode::~Qt4ParametersCategoryNode() = default;

void Qt4ParametersCategoryNode::postInsert()
{
    Qt4GenericModelNode::postInsert();
    m_font = rows::rowFonts().bold;
}

// Only the name has a font of its own; the value column has none.
QVariant Qt4ParametersCategoryNode::dataFontRole(int column)
{
    return column == 0 ? m_font : QVariant();
}

bool Qt4ParametersCategoryNode::enableFirstColumnSpanning()
{
    return true;
}

} // namespace core
} // namespace vorn
