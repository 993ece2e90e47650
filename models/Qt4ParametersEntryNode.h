#pragma once

#include <vorn/models/Qt4ParameterRows.h>
#include <vorn/models/Qt4ParametersModelNode.h>

namespace vorn {
namespace core {

// The row of a plain entry: a node that is no feature of a known kind. Its name shows in red.
class VORN_PARAMETERSQT4_API Qt4ParametersEntryNode
    : public rows::EntryRow<Qt4ParametersModelNode, Qt4ParametersEntryNode>
{
    using EntryRow::EntryRow;
};

} // namespace core
} // namespace vorn
