#pragma once

#include <vorn/models/Qt4ParameterRows.h>
#include <vorn/models/Qt4StyledBooleanParametersModelNode.h>

namespace vorn {
namespace core {

// The "Events" row of a plain entry: its name in red.
class VORN_PARAMETERSQT4_API Qt4StyledBooleanParametersEntryNode
    : public rows::EntryRow<Qt4StyledBooleanParametersModelNode, Qt4StyledBooleanParametersEntryNode>
{
    using EntryRow::EntryRow;
};

} // namespace core
} // namespace vorn
