# Entry points, lifecycle controller and logging of the library frame. Hosts see only the entry points.
vorn_public_headers(lib VornParametersQt4.h)
list(APPEND VORN_QT4_SOURCES
  lib/InstallationRoot.cpp
  lib/LibraryInitController.cpp
  lib/Logger.cpp
  lib/Logging.cpp
  lib/VornParametersQt4.cpp
  lib/VornParametersQt4.h
  lib/private/InstallationRoot.h
  lib/private/LibraryInitController.h
  lib/private/LibraryInitControllerInternal.h
  lib/private/Logger.h
  lib/private/Logging.h
  lib/private/ResourceRegistration.h)
# Registering the icons is the frame's only use of Qt; the Qt-free frame build carries no resources.
if(VORN_FRAME_ONLY)
  list(APPEND VORN_QT4_SOURCES lib/ResourceRegistrationStub.cpp)
else()
  list(APPEND VORN_QT4_SOURCES lib/ResourceRegistration.cpp)
endif()
