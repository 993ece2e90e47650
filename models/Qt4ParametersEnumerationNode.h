#pragma once

#include <vorn/models/Qt4ParameterRows.h>
#include <vorn/models/Qt4ParametersModelNode.h>

namespace vorn {
namespace core {

// The row of an enumeration: the display name of the current entry.
class VORN_PARAMETERSQT4_API Qt4ParametersEnumerationNode
    : public rows::ValueRow<Qt4ParametersModelNode, Qt4ParametersEnumerationNode,
                            rows::ValueText::Enumeration>
{
    using ValueRow::ValueRow;
};

} // namespace core
} // namespace vorn
