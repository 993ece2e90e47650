#pragma once

#include <vorn/models/Qt4ParameterRows.h>
#include <vorn/models/Qt4ParametersModelNode.h>

namespace vorn {
namespace core {

// The row of a floating-point feature: the value with its unit.
class VORN_PARAMETERSQT4_API Qt4ParametersFloatNode
    : public rows::ValueRow<Qt4ParametersModelNode, Qt4ParametersFloatNode, rows::ValueText::Float>
{
    using ValueRow::ValueRow;
};

} // namespace core
} // namespace vorn
