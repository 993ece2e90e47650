#pragma once

#include <vorn/models/Qt4ParameterRows.h>

namespace vorn {
namespace core {

// Compiled with its factory (defined beside it) into the library.
class Qt4StyledParametersModelNode;
extern template class VORN_PARAMETERSQT4_API
    rows::StyledBaseRow<Qt4StyledParametersModelNode, 17, rows::StyledFactory>;

// The base of every row of a Qt4StyledParametersModel, and the row of the tree's root and of parameter
// nodes of a kind that has no styled row of its own: 17-pixel rows with grid lines. Its factory picks
// the styled row class by the parameter node's exact type id.
class VORN_PARAMETERSQT4_API Qt4StyledParametersModelNode
    : public rows::StyledBaseRow<Qt4StyledParametersModelNode, 17, rows::StyledFactory>
{
    using StyledBaseRow::StyledBaseRow;
};

} // namespace core
} // namespace vorn
