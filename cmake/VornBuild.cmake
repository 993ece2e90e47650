# How the project's libraries are built and installed. Included once by the top-level CMakeLists.txt.

# The library folders are included as <vorn/folder/Header.h>, in the build tree as once installed: the
# build tree gets an include root whose vorn/ holds a link to each folder. The repository root is on the
# path of our own targets only, for the private headers of the family libraries ("family/genicam/...").
set(VORN_LIBRARY_FOLDERS base host lib platform models delegate resources)
set(VORN_INCLUDE_ROOT ${CMAKE_BINARY_DIR}/include)
file(MAKE_DIRECTORY ${VORN_INCLUDE_ROOT}/vorn)
foreach(folder ${VORN_LIBRARY_FOLDERS})
  if(NOT EXISTS ${VORN_INCLUDE_ROOT}/vorn/${folder})
    file(CREATE_LINK ${PROJECT_SOURCE_DIR}/${folder} ${VORN_INCLUDE_ROOT}/vorn/${folder} SYMBOLIC)
  endif()
endforeach()

# Warnings for our own code only.
function(vorn_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra)
endfunction()

# vorn_library(<target> SHARED|STATIC|OBJECT <sources>...): one of our libraries. Symbols are hidden
# unless an export macro of base/VornExport.h makes them part of the interface, as on Windows; shared
# libraries carry the project's version and its major version as SOVERSION.
function(vorn_library target kind)
  add_library(${target} ${kind} ${ARGN})
  target_include_directories(${target}
    PUBLIC $<BUILD_INTERFACE:${VORN_INCLUDE_ROOT}> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>
    PRIVATE ${PROJECT_SOURCE_DIR})
  set_target_properties(${target} PROPERTIES CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
  if(kind STREQUAL "SHARED")
    set_target_properties(${target} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
  endif()
  if(TARGET Boost::headers)
    target_link_libraries(${target} PUBLIC Boost::headers)
  endif()
  if(VORN_UNITY_LIBRARIES)
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON)
    # Each source is then an included file, and GCC takes a class there that holds a type of the
    # source's anonymous namespace for one a header would share between sources.
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
      target_compile_options(${target} PRIVATE -Wno-subobject-linkage)
    endif()
  endif()
  vorn_warnings(${target})
endfunction()

# vorn_export(<target> <Name>): installs the library as Vorn::<Name> of the CMake package, and gives the
# build tree the same name.
function(vorn_export target name)
  set_target_properties(${target} PROPERTIES EXPORT_NAME ${name})
  add_library(Vorn::${name} ALIAS ${target})
  install(TARGETS ${target} EXPORT VornTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Runtime NAMELINK_COMPONENT Development
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Runtime
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Development)
endfunction()

# vorn_public_headers(<folder> <headers>...): the headers of a library folder that a host includes, as
# <vorn/<folder>/<header>>. They are installed; every other header of the folder is private to the
# library. The list is also what the layer check holds the includes against.
function(vorn_public_headers folder)
  set(paths "")
  foreach(header ${ARGN})
    list(APPEND paths ${PROJECT_SOURCE_DIR}/${folder}/${header})
    set_property(GLOBAL APPEND PROPERTY VORN_PUBLIC_HEADERS ${folder}/${header})
  endforeach()
  install(FILES ${paths} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/vorn/${folder} COMPONENT Development)
endfunction()

# vorn_check_layers(): fails the build when a folder includes a folder above it, a private header of
# another folder, or when a public header includes a private one (cmake/CheckLayers.cmake says how the
# folders are layered). It runs again whenever a source file changes.
function(vorn_check_layers)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS
    RELATIVE ${PROJECT_SOURCE_DIR}
    ${PROJECT_SOURCE_DIR}/*.h ${PROJECT_SOURCE_DIR}/*.cpp)
  list(FILTER sources EXCLUDE REGEX "^(build|out)[^/]*/")
  get_property(public GLOBAL PROPERTY VORN_PUBLIC_HEADERS)
  set(list_file ${CMAKE_BINARY_DIR}/vorn-public-headers.txt)
  string(REPLACE ";" "\n" public_lines "${public}")
  file(WRITE ${list_file}.new "${public_lines}\n")
  file(COPY_FILE ${list_file}.new ${list_file} ONLY_IF_DIFFERENT)
  set(absolute "")
  foreach(source ${sources})
    list(APPEND absolute ${PROJECT_SOURCE_DIR}/${source})
  endforeach()
  add_custom_command(OUTPUT ${CMAKE_BINARY_DIR}/vorn-layers.checked
    COMMAND ${CMAKE_COMMAND} -DSOURCE_DIR=${PROJECT_SOURCE_DIR} -DPUBLIC_HEADERS=${list_file}
            -P ${PROJECT_SOURCE_DIR}/cmake/CheckLayers.cmake
    COMMAND ${CMAKE_COMMAND} -E touch ${CMAKE_BINARY_DIR}/vorn-layers.checked
    DEPENDS ${absolute} ${list_file} ${PROJECT_SOURCE_DIR}/cmake/CheckLayers.cmake
    COMMENT "Checking that every folder includes only the layers below it"
    VERBATIM)
  add_custom_target(vorn_layers ALL DEPENDS ${CMAKE_BINARY_DIR}/vorn-layers.checked)
endfunction()
