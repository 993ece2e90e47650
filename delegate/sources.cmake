# The item delegate and its editor widgets.
list(APPEND VORN_QT4_SOURCES
  ${PROJECT_SOURCE_DIR}/delegate/CenteredCommandButton.cpp
  ${PROJECT_SOURCE_DIR}/delegate/CenteredCommandButton.h
  ${PROJECT_SOURCE_DIR}/delegate/Qt4Int64SpinBox.cpp
  ${PROJECT_SOURCE_DIR}/delegate/Qt4Int64SpinBox.h
  ${PROJECT_SOURCE_DIR}/delegate/Qt4Int64SpinBoxValidator.cpp
  ${PROJECT_SOURCE_DIR}/delegate/Qt4Int64SpinBoxValidator.h
  ${PROJECT_SOURCE_DIR}/delegate/Qt4ParametersItemDelegate.cpp
  ${PROJECT_SOURCE_DIR}/delegate/Qt4ParametersItemDelegate.h
  ${PROJECT_SOURCE_DIR}/delegate/Qt4UInt64SpinBox.cpp
  ${PROJECT_SOURCE_DIR}/delegate/Qt4UInt64SpinBox.h
  ${PROJECT_SOURCE_DIR}/delegate/Qt4UInt64SpinBoxValidator.cpp
  ${PROJECT_SOURCE_DIR}/delegate/Qt4UInt64SpinBoxValidator.h
  ${PROJECT_SOURCE_DIR}/delegate/SpinBox64Support.h
  ${PROJECT_SOURCE_DIR}/delegate/Ui_CenteredCommandButton.h)
