# The item delegate and its editor widgets.
vorn_public_headers(delegate
  CenteredCommandButton.h
  Qt4Int64SpinBox.h
  Qt4Int64SpinBoxValidator.h
  Qt4ParametersItemDelegate.h
  Qt4UInt64SpinBox.h
  Qt4UInt64SpinBoxValidator.h
  SpinBox64.h
  Ui_CenteredCommandButton.h)
list(APPEND VORN_QT4_SOURCES
  delegate/CenteredCommandButton.cpp
  delegate/CenteredCommandButton.h
  delegate/Qt4Int64SpinBox.h
  delegate/Qt4Int64SpinBoxValidator.h
  delegate/Qt4ParametersItemDelegate.cpp
  delegate/Qt4ParametersItemDelegate.h
  delegate/Qt4UInt64SpinBox.h
  delegate/Qt4UInt64SpinBoxValidator.h
  delegate/SpinBox64.cpp
  delegate/SpinBox64.h
  delegate/Ui_CenteredCommandButton.h)
