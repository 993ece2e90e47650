#pragma once

#include <vorn/models/Qt4ParameterRows.h>
#include <vorn/models/Qt4StyledParametersModelNode.h>

namespace vorn {
namespace core {

// The styled row of a category: a bold, spanning, 12-pixel header row without grid lines.
class VORN_PARAMETERSQT4_API Qt4StyledParametersCategoryNode
    : public rows::StyledCategoryRow<Qt4StyledParametersModelNode, Qt4StyledParametersCategoryNode>
{
    using StyledCategoryRow::StyledCategoryRow;
};

} // namespace core
} // namespace vorn
