# Entry points, lifecycle controller and logging of the library frame.
list(APPEND VORN_QT4_SOURCES
  ${PROJECT_SOURCE_DIR}/lib/InstallationRoot.cpp
  ${PROJECT_SOURCE_DIR}/lib/LibraryInitController.cpp
  ${PROJECT_SOURCE_DIR}/lib/Logger.cpp
  ${PROJECT_SOURCE_DIR}/lib/Logging.cpp
  ${PROJECT_SOURCE_DIR}/lib/VornParametersQt4.cpp)
# Registering the icons is the frame's only use of Qt; the Qt-free frame build carries no resources.
if(VORN_FRAME_ONLY)
  list(APPEND VORN_QT4_SOURCES ${PROJECT_SOURCE_DIR}/lib/ResourceRegistrationStub.cpp)
else()
  list(APPEND VORN_QT4_SOURCES ${PROJECT_SOURCE_DIR}/lib/ResourceRegistration.cpp)
endif()
