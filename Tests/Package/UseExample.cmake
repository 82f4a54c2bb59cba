# Builds the smallest example as its users do, against the library in `prefix`, and runs it.
function(run)
  execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE status)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "'${ARGN}' ended with ${status}:\n${output}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

function(use_example prefix)
  file(COPY "${EXAMPLE}/" DESTINATION "${WORK}/project")
  run(${CMAKE_COMMAND} -S "${WORK}/project" -B "${WORK}/build" -G Ninja "-DCMAKE_PREFIX_PATH=${prefix}"
      "-DCMAKE_CXX_COMPILER=${CXX}" -DCMAKE_BUILD_TYPE=Release)
  run(${CMAKE_COMMAND} --build "${WORK}/build")
  run("${WORK}/build/smallest")
  if(NOT output STREQUAL "Hello, world!\n")
    message(FATAL_ERROR "the example printed:\n${output}")
  endif()
endfunction()
