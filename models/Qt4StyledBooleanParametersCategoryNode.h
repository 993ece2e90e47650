#pragma once

#include <vorn/models/Qt4ParameterRows.h>
#include <vorn/models/Qt4StyledBooleanParametersModelNode.h>

namespace vorn {
namespace core {

// The "Events" row of a category: a bold, spanning, 12-pixel header that opens by itself. Its
// foreground and background stay empty, so the view's palette applies.
class VORN_PARAMETERSQT4_API Qt4StyledBooleanParametersCategoryNode
    : public rows::StyledCategoryRow<Qt4StyledBooleanParametersModelNode,
                                     Qt4StyledBooleanParametersCategoryNode>
{
public:
    using StyledCategoryRow::StyledCategoryRow;
    ~Qt4StyledBooleanParametersCategoryNode() override;

    QVariant dataBackgroundRole(int column) override;
    QVariant dataForegroundRole(int column) override;
    bool enableAutoExpand() override;

private:
    QVariant m_foreground;
    QVariant m_background;
};

} // namespace core
} // namespace vorn
