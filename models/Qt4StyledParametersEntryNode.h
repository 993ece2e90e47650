#pragma once

#include <vorn/models/Qt4ParameterRows.h>
#include <vorn/models/Qt4StyledParametersModelNode.h>

namespace vorn {
namespace core {

// The styled row of a plain entry: its name in red.
class VORN_PARAMETERSQT4_API Qt4StyledParametersEntryNode
    : public rows::EntryRow<Qt4StyledParametersModelNode, Qt4StyledParametersEntryNode>
{
    using EntryRow::EntryRow;
};

} // namespace core
} // namespace vorn
