# The parameter tree library itself (module tag "VornParametersQt4"). Each of its folders lists its
# own files in a sources.cmake (VORN_QT4_SOURCES += ...), so that folders can grow independently.
set(VORN_QT4_SOURCES "")
foreach(folder lib platform models delegate resources)
  if(EXISTS ${PROJECT_SOURCE_DIR}/${folder}/sources.cmake)
    include(${PROJECT_SOURCE_DIR}/${folder}/sources.cmake)
  endif()
endforeach()

if(VORN_QT4_SOURCES)
  vorn_library(vornparametersqt4 SHARED ${VORN_QT4_SOURCES})
  set_target_properties(vornparametersqt4 PROPERTIES AUTOMOC ON AUTORCC ON AUTOUIC OFF)
  target_compile_definitions(vornparametersqt4 PRIVATE VORN_PARAMETERSQT4_BUILD)
  target_link_libraries(vornparametersqt4 PUBLIC vorncore vornparameters vornmodelqt4
    Qt5::Core Qt5::Gui Qt5::Widgets PRIVATE Threads::Threads ${CMAKE_DL_LIBS})
  install(TARGETS vornparametersqt4 EXPORT VornTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
  foreach(folder lib platform models delegate resources)
    install(DIRECTORY ${folder} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/vorn FILES_MATCHING PATTERN "*.h")
  endforeach()
endif()
