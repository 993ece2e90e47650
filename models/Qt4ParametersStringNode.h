#pragma once

#include <vorn/models/Qt4ParameterRows.h>
#include <vorn/models/Qt4ParametersModelNode.h>

namespace vorn {
namespace core {

// The row of a string feature: the text in a bold fixed-width font.
class VORN_PARAMETERSQT4_API Qt4ParametersStringNode
    : public rows::StringRow<Qt4ParametersModelNode, Qt4ParametersStringNode>
{
    using StringRow::StringRow;
};

} // namespace core
} // namespace vorn
