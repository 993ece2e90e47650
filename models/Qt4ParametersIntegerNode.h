#pragma once

#include <vorn/models/Qt4ParameterRows.h>
#include <vorn/models/Qt4ParametersModelNode.h>

#include <vorn/host/MvParametersIntegerNode.h>

namespace vorn {
namespace core {

// The row of a signed 64-bit integer feature: decimal, "0x" hex, dotted or colon address with its
// unit, or a check box, by the parameter's representation.
class VORN_PARAMETERSQT4_API Qt4ParametersIntegerNode
    : public rows::IntegralRow<Qt4ParametersModelNode, models::MvParametersIntegerNode,
                               Qt4ParametersIntegerNode>
{
    using IntegralRow::IntegralRow;
};

} // namespace core
} // namespace vorn
