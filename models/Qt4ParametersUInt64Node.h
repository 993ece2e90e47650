#pragma once

#include <vorn/models/Qt4ParameterRows.h>
#include <vorn/models/Qt4ParametersModelNode.h>

#include <vorn/host/MvParametersUInt64Node.h>

namespace vorn {
namespace core {

// The row of an unsigned 64-bit integer feature: decimal, "0x" hex, dotted or colon address with
// its unit, or a check box, by the parameter's representation.
class VORN_PARAMETERSQT4_API Qt4ParametersUInt64Node
    : public rows::IntegralRow<Qt4ParametersModelNode, models::MvParametersUInt64Node,
                               Qt4ParametersUInt64Node>
{
    using IntegralRow::IntegralRow;
};

} // namespace core
} // namespace vorn
