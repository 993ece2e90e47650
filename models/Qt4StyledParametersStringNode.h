#pragma once

#include <vorn/models/Qt4ParameterRows.h>
#include <vorn/models/Qt4StyledParametersModelNode.h>

namespace vorn {
namespace core {

// The styled row of a string feature: the text in a bold fixed-width font.
class VORN_PARAMETERSQT4_API Qt4StyledParametersStringNode
    : public rows::StringRow<Qt4StyledParametersModelNode, Qt4StyledParametersStringNode>
{
    using StringRow::StringRow;
};

} // namespace core
} // namespace vorn
