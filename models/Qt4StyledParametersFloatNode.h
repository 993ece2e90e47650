#pragma once

#include <vorn/models/Qt4ParameterRows.h>
#include <vorn/models/Qt4StyledParametersModelNode.h>

namespace vorn {
namespace core {

// The styled row of a floating-point feature: a field shows its index before the value.
class VORN_PARAMETERSQT4_API Qt4StyledParametersFloatNode
    : public rows::ValueRow<Qt4StyledParametersModelNode, Qt4StyledParametersFloatNode,
                            rows::ValueText::FloatWithIndex>
{
    using ValueRow::ValueRow;
};

} // namespace core
} // namespace vorn
