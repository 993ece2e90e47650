# The editor widgets of the item delegate.
list(APPEND VORN_QT4_SOURCES
  ${PROJECT_SOURCE_DIR}/delegate/CenteredCommandButton.cpp
  ${PROJECT_SOURCE_DIR}/delegate/CenteredCommandButton.h
  ${PROJECT_SOURCE_DIR}/delegate/Ui_CenteredCommandButton.h)
