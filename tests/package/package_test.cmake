# Script of the package.consumer test; see CMakeLists.txt beside it.
file(REMOVE_RECURSE ${WORK_DIR})
set(_prefix ${WORK_DIR}/prefix)
set(_build ${WORK_DIR}/build)

function(run step)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE _rc OUTPUT_VARIABLE _out ERROR_VARIABLE _err)
  if(NOT _rc EQUAL 0)
    message(FATAL_ERROR "${step} failed (${_rc}):\n${_out}\n${_err}")
  endif()
  message(STATUS "${step}: ok")
  set(LAST_OUTPUT "${_out}" PARENT_SCOPE)
endfunction()

set(_config_arg)
if(CONFIG)
  set(_config_arg --config ${CONFIG})
endif()
run("install" ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${_prefix} ${_config_arg})

set(_flags)
if(EXTRA_FLAGS)
  list(APPEND _flags "-DCMAKE_CXX_FLAGS=${EXTRA_FLAGS}" "-DCMAKE_EXE_LINKER_FLAGS=${EXTRA_FLAGS}")
endif()
# The consumer installs its programs into the same prefix, with the same
# library folder, as an application packaged beside KelCore.
file(STRINGS ${BUILD_DIR}/CMakeCache.txt _libdir_line REGEX "^CMAKE_INSTALL_LIBDIR:")
string(REGEX REPLACE "^[^=]*=" "" _libdir "${_libdir_line}")
run("configure consumer" ${CMAKE_COMMAND} -S ${CONSUMER_DIR} -B ${_build}
  -DCMAKE_PREFIX_PATH=${_prefix} -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_BUILD_TYPE=RelWithDebInfo
  -DCMAKE_INSTALL_PREFIX=${_prefix} -DCMAKE_INSTALL_LIBDIR=${_libdir} -DKELCORE_PACKAGE=${PACKAGE}
  -DCMAKE_FIND_PACKAGE_NO_PACKAGE_REGISTRY=ON ${_flags})

# The package must come from the prefix, not from the build tree.
file(STRINGS ${_build}/CMakeCache.txt _dir_line REGEX "^${PACKAGE}_DIR:")
string(FIND "${_dir_line}" "${_prefix}/" _at)
if(NOT _at GREATER -1)
  message(FATAL_ERROR "${PACKAGE} was not found in the install prefix: ${_dir_line}")
endif()

run("build consumer" ${CMAKE_COMMAND} --build ${_build})
run("install consumer" ${CMAKE_COMMAND} --install ${_build})

# Run from the prefix with no library path: the installed programs and
# libraries must find each other by themselves.
foreach(program kelcore_consumer kelcore_consumer_core)
  run("run ${program}" ${CMAKE_COMMAND} -E env --unset=LD_LIBRARY_PATH ${_prefix}/bin/${program})
  message(STATUS "${LAST_OUTPUT}")
endforeach()
