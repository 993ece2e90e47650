# Checks how the folders of the repository include each other (cmake -P; SOURCE_DIR and PUBLIC_HEADERS
# given). docs/architecture.md draws the layers; this script is what holds the code to them.
#
# 1. A folder includes only folders of a lower layer, and itself. Folders of one layer never include
#    each other.
# 2. A header in a <folder>/private/ directory is the folder's own: no other folder includes it.
#
# Tests, benchmarks and fuzzers stand above everything and may include anything, private headers too,
# to reach what they check.
# 3. A public header (installed for hosts, listed in PUBLIC_HEADERS) includes only public headers.
#
# Includes of the library folders are written <vorn/folder/...>, those of the family libraries
# "family/<library>/..."; anything else (Qt, Boost, the standard library, a header beside the file) is
# not looked at.

cmake_policy(VERSION 3.16)

set(layer_of_base 0)
set(layer_of_host 1)
set(layer_of_platform 1)
set(layer_of_resources 1)
set(layer_of_family/common 1)
set(layer_of_family/core 2)
set(layer_of_family/parameters 2)
set(layer_of_family/modelqt4 2)
set(layer_of_family/dispatcher 2)
set(layer_of_lib 2)
set(layer_of_delegate 3)
set(layer_of_family/genicam 3)
set(layer_of_models 4)
set(layer_of_app 5)
set(layer_of_tests 6)
set(layer_of_bench 6)
set(layer_of_fuzz 6)
set(free_folders tests bench fuzz)

# The folder a path belongs to: its first component, or its first two under family/.
function(folder_of path out)
  if(path MATCHES "^family/([^/]+)/")
    set(${out} "family/${CMAKE_MATCH_1}" PARENT_SCOPE)
  elseif(path MATCHES "^([^/]+)/")
    set(${out} "${CMAKE_MATCH_1}" PARENT_SCOPE)
  else()
    set(${out} "" PARENT_SCOPE)
  endif()
endfunction()

file(STRINGS ${PUBLIC_HEADERS} public_headers)
file(GLOB_RECURSE sources RELATIVE ${SOURCE_DIR} ${SOURCE_DIR}/*.h ${SOURCE_DIR}/*.cpp)
list(FILTER sources EXCLUDE REGEX "^(build|out)[^/]*/")

set(problems "")
foreach(source ${sources})
  folder_of(${source} from)
  list(FIND free_folders "${from}" from_free)
  if(from STREQUAL "" OR NOT DEFINED layer_of_${from} OR NOT from_free EQUAL -1)
    continue()
  endif()
  list(FIND public_headers ${source} source_public)
  file(STRINGS ${SOURCE_DIR}/${source} lines REGEX "^[ \t]*#[ \t]*include[ \t]*[<\"](vorn|family)/")
  foreach(line ${lines})
    if(line MATCHES "#[ \t]*include[ \t]*<vorn/([^>]+)>")
      set(target "${CMAKE_MATCH_1}")
    elseif(line MATCHES "#[ \t]*include[ \t]*\"(family/[^\"]+)\"")
      set(target "${CMAKE_MATCH_1}")
    else()
      continue()
    endif()
    folder_of(${target} to)
    if(NOT DEFINED layer_of_${to})
      list(APPEND problems "${source}: includes ${target}, which is in no known folder")
      continue()
    endif()
    if(NOT to STREQUAL from AND NOT layer_of_${to} LESS layer_of_${from})
      list(APPEND problems
        "${source}: includes ${target}, but ${from}/ (layer ${layer_of_${from}}) may only include layers below it and ${to}/ is layer ${layer_of_${to}}")
    endif()
    if(NOT to STREQUAL from AND target MATCHES "^[^/]+(/[^/]+)?/private/")
      list(APPEND problems "${source}: includes ${target}, a private header of ${to}/")
    endif()
    if(NOT source_public EQUAL -1)
      list(FIND public_headers ${target} target_public)
      if(target_public EQUAL -1)
        list(APPEND problems "${source}: a public header, includes ${target}, which is not public")
      endif()
    endif()
  endforeach()
endforeach()

if(problems)
  list(JOIN problems "\n  " text)
  message(FATAL_ERROR "The layers are broken:\n  ${text}")
endif()
