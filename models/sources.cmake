# The three model families with their row classes and node factories, and the filter model.
set(models_public_headers
  Qt4ParametersModel.h Qt4ParametersModelNode.h Qt4ParametersFilterModel.h
  Qt4ParametersEntryNode.h Qt4ParametersCategoryNode.h Qt4ParametersStringNode.h
  Qt4ParametersIntegerNode.h Qt4ParametersUInt64Node.h Qt4ParametersFloatNode.h
  Qt4ParametersBooleanNode.h Qt4ParametersEnumerationNode.h Qt4ParametersCommandNode.h
  Qt4StyledParametersModel.h Qt4StyledParametersModelNode.h
  Qt4StyledParametersEntryNode.h Qt4StyledParametersCategoryNode.h Qt4StyledParametersStringNode.h
  Qt4StyledParametersIntegerNode.h Qt4StyledParametersUInt64Node.h Qt4StyledParametersFloatNode.h
  Qt4StyledParametersBooleanNode.h Qt4StyledParametersEnumerationNode.h
  Qt4StyledBooleanParametersModel.h Qt4StyledBooleanParametersModelNode.h
  Qt4StyledBooleanParametersEntryNode.h Qt4StyledBooleanParametersCategoryNode.h
  Qt4StyledBooleanParametersBooleanNode.h
  Qt4ParameterRows.h IntegerDetails.h IntegerViewModeKey.h)
list(APPEND VORN_QT4_SOURCES models/Qt4ParameterRows.cpp)
vorn_public_headers(models ${models_public_headers})
foreach(header ${models_public_headers})
  list(APPEND VORN_QT4_SOURCES models/${header})
  string(REGEX REPLACE "\\.h$" ".cpp" source ${header})
  if(EXISTS ${PROJECT_SOURCE_DIR}/models/${source})
    list(APPEND VORN_QT4_SOURCES models/${source})
  endif()
endforeach()
list(APPEND VORN_QT4_SOURCES
  models/private/RowAnswers.h
  models/private/RowFactory.h
  models/private/RowTemplates.h
  models/private/RowText.h
  models/private/ValueTexts.h)
