#include <vorn/models/Qt4StyledBooleanParametersCategoryNode.h>

namespace vorn {
namespace core {

Qt4StyledBooleanParametersCategoryNode::~Qt4StyledBooleanParametersCategoryNode() = default;

QVariant Qt4StyledBooleanParametersCategoryNode::dataBackgroundRole(int column)
{
    return column == 0 ? m_background : QVariant();
}

QVariant Qt4StyledBooleanParametersCategoryNode::dataForegroundRole(int column)
{
    return column == 0 ? m_foreground : QVariant();
}

bool Qt4StyledBooleanParametersCategoryNode::enableAutoExpand()
{
    return true;
}

} // namespace core
} // namespace vorn
