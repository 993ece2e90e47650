# The three model families with their row classes and node factories, and the filter model.
foreach(name
    ParameterRowSupport.h IntegerRowSupport.h IntegerDetails.h IntegerViewModeKey.h ValueRowSupport.h StyledRowSupport.h RowFactory.h
    Qt4ParametersModel.cpp Qt4ParametersModel.h
    Qt4ParametersModelNode.cpp
    Qt4ParametersEntryNode.cpp Qt4ParametersCategoryNode.cpp Qt4ParametersStringNode.cpp
    Qt4ParametersIntegerNode.cpp Qt4ParametersUInt64Node.cpp Qt4ParametersFloatNode.cpp
    Qt4ParametersBooleanNode.cpp Qt4ParametersEnumerationNode.cpp
    Qt4ParametersCommandNode.cpp Qt4ParametersCommandNode.h
    Qt4StyledParametersModel.cpp Qt4StyledParametersModel.h
    Qt4StyledParametersModelNode.cpp
    Qt4StyledParametersEntryNode.cpp Qt4StyledParametersCategoryNode.cpp Qt4StyledParametersStringNode.cpp
    Qt4StyledParametersIntegerNode.cpp Qt4StyledParametersUInt64Node.cpp Qt4StyledParametersFloatNode.cpp
    Qt4StyledParametersBooleanNode.cpp Qt4StyledParametersEnumerationNode.cpp
    Qt4StyledBooleanParametersModel.cpp Qt4StyledBooleanParametersModel.h
    Qt4StyledBooleanParametersModelNode.cpp
    Qt4StyledBooleanParametersEntryNode.cpp Qt4StyledBooleanParametersCategoryNode.cpp
    Qt4StyledBooleanParametersBooleanNode.cpp
    Qt4ParametersFilterModel.cpp Qt4ParametersFilterModel.h)
  list(APPEND VORN_QT4_SOURCES ${PROJECT_SOURCE_DIR}/models/${name})
endforeach()
