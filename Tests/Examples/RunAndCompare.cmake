# Runs PROGRAM and compares its output with the file RECORDED. Lines may end as the system ends them.
string(REGEX REPLACE "^;" "" PROGRAM "${PROGRAM}")
execute_process(
  COMMAND ${PROGRAM}
  OUTPUT_VARIABLE output
  RESULT_VARIABLE status)
file(READ "${RECORDED}" recorded)
string(REPLACE "\r" "" output "${output}")
if(NOT status EQUAL 0)
  message(FATAL_ERROR "ended with ${status}:\n${output}")
endif()
if(NOT output STREQUAL recorded)
  message(FATAL_ERROR "printed something else than ${RECORDED}:\n${output}")
endif()
