#pragma once

#include <vorn/models/Qt4ParameterRows.h>
#include <vorn/models/Qt4StyledParametersModelNode.h>

#include <vorn/host/MvParametersIntegerNode.h>

namespace vorn {
namespace core {

// The styled row of a signed 64-bit integer: plain numbers follow the view mode (decimal, hex or
// binary) with a field index in front, and a details tool tip shows the value in every base.
class VORN_PARAMETERSQT4_API Qt4StyledParametersIntegerNode
    : public rows::StyledIntegralRow<Qt4StyledParametersModelNode, models::MvParametersIntegerNode,
                                     Qt4StyledParametersIntegerNode>
{
    using StyledIntegralRow::StyledIntegralRow;
};

} // namespace core
} // namespace vorn
