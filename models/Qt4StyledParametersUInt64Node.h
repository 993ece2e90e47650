#pragma once

#include <vorn/models/Qt4ParameterRows.h>
#include <vorn/models/Qt4StyledParametersModelNode.h>

#include <vorn/host/MvParametersUInt64Node.h>

namespace vorn {
namespace core {

// The styled row of an unsigned 64-bit integer: plain numbers follow the view mode (decimal, hex or
// binary) with a field index in front, and a details tool tip shows the value in every base.
class VORN_PARAMETERSQT4_API Qt4StyledParametersUInt64Node
    : public rows::StyledIntegralRow<Qt4StyledParametersModelNode, models::MvParametersUInt64Node,
                                     Qt4StyledParametersUInt64Node>
{
    using StyledIntegralRow::StyledIntegralRow;
};

} // namespace core
} // namespace vorn
