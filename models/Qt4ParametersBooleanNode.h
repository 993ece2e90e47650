#pragma once

#include <vorn/models/Qt4ParameterRows.h>
#include <vorn/models/Qt4ParametersModelNode.h>

namespace vorn {
namespace core {

// The row of a boolean feature: a check box in the value column that writes through the tree.
class VORN_PARAMETERSQT4_API Qt4ParametersBooleanNode
    : public rows::BooleanRow<Qt4ParametersModelNode, Qt4ParametersBooleanNode>
{
    using BooleanRow::BooleanRow;
};

} // namespace core
} // namespace vorn
