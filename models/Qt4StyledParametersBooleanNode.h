#pragma once

#include <vorn/models/Qt4ParameterRows.h>
#include <vorn/models/Qt4StyledParametersModelNode.h>

namespace vorn {
namespace core {

// The styled row of a boolean feature: a check box in the value column that writes through the tree.
class VORN_PARAMETERSQT4_API Qt4StyledParametersBooleanNode
    : public rows::BooleanRow<Qt4StyledParametersModelNode, Qt4StyledParametersBooleanNode>
{
    using BooleanRow::BooleanRow;
};

} // namespace core
} // namespace vorn
