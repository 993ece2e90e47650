# The parameter tree library itself (module tag "VornParametersQt4"). Each of its folders lists its
# own files in a sources.cmake (VORN_QT4_SOURCES += ...), so that folders can grow independently.
# The Qt-free frame build (VORN_FRAME_ONLY) takes only the frame's folders.
if(VORN_FRAME_ONLY)
  set(VORN_QT4_FOLDERS lib platform)
else()
  set(VORN_QT4_FOLDERS lib platform models delegate resources)
endif()

set(VORN_QT4_SOURCES "")
foreach(folder ${VORN_QT4_FOLDERS})
  if(EXISTS ${PROJECT_SOURCE_DIR}/${folder}/sources.cmake)
    include(${PROJECT_SOURCE_DIR}/${folder}/sources.cmake)
  endif()
endforeach()

if(VORN_QT4_SOURCES)
  vorn_library(vornparametersqt4 SHARED ${VORN_QT4_SOURCES})
  target_compile_definitions(vornparametersqt4 PRIVATE VORN_PARAMETERSQT4_BUILD)
  target_link_libraries(vornparametersqt4 PUBLIC vorncore vornparameters vornmodelqt4
    PRIVATE Threads::Threads ${CMAKE_DL_LIBS})
  if(NOT VORN_FRAME_ONLY)
    set_target_properties(vornparametersqt4 PROPERTIES AUTOMOC ON AUTORCC ON AUTOUIC OFF)
    target_link_libraries(vornparametersqt4 PUBLIC Qt5::Core Qt5::Gui Qt5::Widgets)
  endif()
  install(TARGETS vornparametersqt4 EXPORT VornTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
  # Headers named *Internal.h hold switches for the library's own tests; hosts never get them.
  foreach(folder ${VORN_QT4_FOLDERS})
    install(DIRECTORY ${folder} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/vorn FILES_MATCHING PATTERN "*.h"
      PATTERN "*Internal.h" EXCLUDE)
  endforeach()
endif()
