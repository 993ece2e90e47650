#pragma once

#include <vorn/models/Qt4ParameterRows.h>

namespace vorn {
namespace core {

// Compiled with its factory (defined beside it) into the library.
class Qt4StyledBooleanParametersModelNode;
extern template class VORN_PARAMETERSQT4_API
    rows::StyledBaseRow<Qt4StyledBooleanParametersModelNode, 16, rows::EventsFactory>;

// The base of the "Events" model's rows: the styled rows' answers on 16-pixel rows. Its factory makes
// rows for categories, booleans and plain entries only; every other kind is left out with all that
// lies below it.
class VORN_PARAMETERSQT4_API Qt4StyledBooleanParametersModelNode
    : public rows::StyledBaseRow<Qt4StyledBooleanParametersModelNode, 16, rows::EventsFactory>
{
    using StyledBaseRow::StyledBaseRow;
};

} // namespace core
} // namespace vorn
