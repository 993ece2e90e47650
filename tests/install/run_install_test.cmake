# Installs the build into a fresh prefix, then configures, builds and runs the host (host/) against it:
# it shows a model in a view and prints its rows. Each run works in a folder of its own (two runs of
# the suite may share a build tree), removed when it passes.
string(RANDOM LENGTH 8 run)
set(WORK_DIR ${WORK_DIR}/${run})
file(REMOVE_RECURSE ${WORK_DIR})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${WORK_DIR}/prefix
                RESULT_VARIABLE rc OUTPUT_QUIET)
if(rc)
  message(FATAL_ERROR "install failed: ${rc}")
endif()
# The host is built with the library's compiler and flags (a sanitized library needs a sanitized host).
set(host_options "")
if(HOST_CXX)
  list(APPEND host_options "-DCMAKE_CXX_COMPILER=${HOST_CXX}" "-DCMAKE_CXX_FLAGS=${HOST_CXX_FLAGS}"
       "-DCMAKE_EXE_LINKER_FLAGS=${HOST_LINKER_FLAGS}")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -S ${HOST_DIR} -B ${WORK_DIR}/host -DCMAKE_PREFIX_PATH=${WORK_DIR}/prefix
                        ${host_options}
                RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
if(rc)
  message(FATAL_ERROR "configuring the host failed:\n${out}\n${err}")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} --build ${WORK_DIR}/host RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
if(rc)
  message(FATAL_ERROR "building the host failed:\n${out}\n${err}")
endif()
execute_process(COMMAND ${WORK_DIR}/host/vorn-host RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
if(NOT rc EQUAL 0 OR NOT out MATCHES "Width = 640 px\n")
  message(FATAL_ERROR "the host printed '${out}' (exit ${rc}): ${err}")
endif()
message(STATUS "host built against the installed tree printed: ${out}")
file(REMOVE_RECURSE ${WORK_DIR})
