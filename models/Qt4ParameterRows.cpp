// The row templates compiled into the library, once for each row class they make.
#include <vorn/models/Qt4ParametersBooleanNode.h>
#include <vorn/models/Qt4ParametersEntryNode.h>
#include <vorn/models/Qt4ParametersEnumerationNode.h>
#include <vorn/models/Qt4ParametersFloatNode.h>
#include <vorn/models/Qt4ParametersIntegerNode.h>
#include <vorn/models/Qt4ParametersStringNode.h>
#include <vorn/models/Qt4ParametersUInt64Node.h>
#include <vorn/models/Qt4StyledBooleanParametersCategoryNode.h>
#include <vorn/models/Qt4StyledBooleanParametersEntryNode.h>
#include <vorn/models/Qt4StyledParametersBooleanNode.h>
#include <vorn/models/Qt4StyledParametersCategoryNode.h>
#include <vorn/models/Qt4StyledParametersEntryNode.h>
#include <vorn/models/Qt4StyledParametersEnumerationNode.h>
#include <vorn/models/Qt4StyledParametersFloatNode.h>
#include <vorn/models/Qt4StyledParametersIntegerNode.h>
#include <vorn/models/Qt4StyledParametersStringNode.h>
#include <vorn/models/Qt4StyledParametersUInt64Node.h>

#include <vorn/models/private/RowTemplates.h>

namespace vorn {
namespace core {

template class rows::BooleanRow<Qt4ParametersModelNode, Qt4ParametersBooleanNode>;
template class rows::EntryRow<Qt4ParametersModelNode, Qt4ParametersEntryNode>;
template class rows::ValueRow<Qt4ParametersModelNode, Qt4ParametersEnumerationNode,
                              rows::ValueText::Enumeration>;
template class rows::ValueRow<Qt4ParametersModelNode, Qt4ParametersFloatNode, rows::ValueText::Float>;
template class rows::IntegralCheckRow<Qt4ParametersModelNode, models::MvParametersIntegerNode,
                                      Qt4ParametersIntegerNode>;
template class rows::IntegralRow<Qt4ParametersModelNode, models::MvParametersIntegerNode,
                                 Qt4ParametersIntegerNode>;
template class rows::ValueRow<Qt4ParametersModelNode, Qt4ParametersStringNode, rows::ValueText::String>;
template class rows::StringRow<Qt4ParametersModelNode, Qt4ParametersStringNode>;
template class rows::IntegralCheckRow<Qt4ParametersModelNode, models::MvParametersUInt64Node,
                                      Qt4ParametersUInt64Node>;
template class rows::IntegralRow<Qt4ParametersModelNode, models::MvParametersUInt64Node,
                                 Qt4ParametersUInt64Node>;
template class rows::StyledCategoryRow<Qt4StyledBooleanParametersModelNode,
                                       Qt4StyledBooleanParametersCategoryNode>;
template class rows::EntryRow<Qt4StyledBooleanParametersModelNode, Qt4StyledBooleanParametersEntryNode>;
template class rows::BooleanRow<Qt4StyledParametersModelNode, Qt4StyledParametersBooleanNode>;
template class rows::StyledCategoryRow<Qt4StyledParametersModelNode, Qt4StyledParametersCategoryNode>;
template class rows::EntryRow<Qt4StyledParametersModelNode, Qt4StyledParametersEntryNode>;
template class rows::ValueRow<Qt4StyledParametersModelNode, Qt4StyledParametersEnumerationNode,
                              rows::ValueText::Enumeration>;
template class rows::ValueRow<Qt4StyledParametersModelNode, Qt4StyledParametersFloatNode,
                              rows::ValueText::FloatWithIndex>;
template class rows::IntegralCheckRow<Qt4StyledParametersModelNode, models::MvParametersIntegerNode,
                                      Qt4StyledParametersIntegerNode>;
template class rows::StyledIntegralRow<Qt4StyledParametersModelNode, models::MvParametersIntegerNode,
                                       Qt4StyledParametersIntegerNode>;
template class rows::ValueRow<Qt4StyledParametersModelNode, Qt4StyledParametersStringNode,
                              rows::ValueText::String>;
template class rows::StringRow<Qt4StyledParametersModelNode, Qt4StyledParametersStringNode>;
template class rows::IntegralCheckRow<Qt4StyledParametersModelNode, models::MvParametersUInt64Node,
                                      Qt4StyledParametersUInt64Node>;
template class rows::StyledIntegralRow<Qt4StyledParametersModelNode, models::MvParametersUInt64Node,
                                       Qt4StyledParametersUInt64Node>;

} // namespace core
} // namespace vorn
