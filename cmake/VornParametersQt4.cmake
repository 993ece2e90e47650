# The parameter tree library itself (module tag "VornParametersQt4"), Vorn::ParametersQt4. Each of its
# folders lists its files in a sources.cmake: the sources (VORN_QT4_SOURCES, relative to the repository)
# and, through vorn_public_headers, the headers a host includes. The Qt-free frame build
# (VORN_FRAME_ONLY) takes only the frame's folders.
if(VORN_FRAME_ONLY)
  set(VORN_QT4_FOLDERS lib platform)
else()
  set(VORN_QT4_FOLDERS lib platform models delegate resources)
endif()

set(VORN_QT4_SOURCES "")
foreach(folder ${VORN_QT4_FOLDERS})
  include(${PROJECT_SOURCE_DIR}/${folder}/sources.cmake)
endforeach()
list(TRANSFORM VORN_QT4_SOURCES PREPEND ${PROJECT_SOURCE_DIR}/)

# The library's code is compiled once, into vornparametersqt4_objects: the shared library is made of it,
# and the tests of what hosts never see (the frame's locks, lifecycle and logging, the test switches)
# link it directly, since the shared library keeps those symbols to itself.
vorn_library(vornparametersqt4_objects OBJECT ${VORN_QT4_SOURCES})
target_compile_definitions(vornparametersqt4_objects PUBLIC VORN_PARAMETERSQT4_BUILD)
target_link_libraries(vornparametersqt4_objects PUBLIC vorncore vornparameters vornmodelqt4
  Threads::Threads ${CMAKE_DL_LIBS})
if(NOT VORN_FRAME_ONLY)
  set_target_properties(vornparametersqt4_objects PROPERTIES AUTOMOC ON AUTORCC ON AUTOUIC OFF)
  target_link_libraries(vornparametersqt4_objects PUBLIC Qt5::Core Qt5::Gui Qt5::Widgets)
endif()

vorn_library(vornparametersqt4 SHARED $<TARGET_OBJECTS:vornparametersqt4_objects>)
target_link_libraries(vornparametersqt4 PUBLIC vorncore vornparameters vornmodelqt4
  PRIVATE Threads::Threads ${CMAKE_DL_LIBS})
if(NOT VORN_FRAME_ONLY)
  target_link_libraries(vornparametersqt4 PUBLIC Qt5::Core Qt5::Gui Qt5::Widgets)
endif()
vorn_export(vornparametersqt4 ParametersQt4)
