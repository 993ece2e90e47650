#pragma once

#include <vorn/models/Qt4ParameterRows.h>
#include <vorn/models/Qt4StyledParametersModelNode.h>

namespace vorn {
namespace core {

// The styled row of an enumeration: the display name of the current entry.
class VORN_PARAMETERSQT4_API Qt4StyledParametersEnumerationNode
    : public rows::ValueRow<Qt4StyledParametersModelNode, Qt4StyledParametersEnumerationNode,
                            rows::ValueText::Enumeration>
{
    using ValueRow::ValueRow;
};

} // namespace core
} // namespace vorn
