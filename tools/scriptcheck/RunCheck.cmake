# Runs CHECKER with ARGS (a list), standard input from INPUT if given, and
# checks its exit status against EXPECT_RC and, if EXPECT_OUTPUT names a
# file, its output (standard output followed by standard error) against
# that file's contents.
set(_input)
if(INPUT)
  set(_input INPUT_FILE ${INPUT})
endif()
execute_process(COMMAND ${CHECKER} ${ARGS} ${_input}
  OUTPUT_VARIABLE _out ERROR_VARIABLE _err RESULT_VARIABLE _rc)
if(NOT _rc STREQUAL EXPECT_RC)
  message(FATAL_ERROR "exit status ${_rc}, expected ${EXPECT_RC}\n${_out}${_err}")
endif()
if(EXPECT_OUTPUT)
  file(READ ${EXPECT_OUTPUT} _expected)
  if(NOT "${_out}${_err}" STREQUAL "${_expected}")
    message(FATAL_ERROR "output differs.\n--- got:\n${_out}${_err}--- expected:\n${_expected}")
  endif()
endif()
