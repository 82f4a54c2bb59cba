# Installs the library of the build folder BUILD into a home folder of its own, WORK, and runs there what the guide tells
# its readers to, on the files that it shows.
file(REMOVE_RECURSE "${WORK}")
execute_process(COMMAND ${CMAKE_COMMAND} --install "${BUILD}" --prefix "${WORK}/zorbel" OUTPUT_QUIET
                COMMAND_ERROR_IS_FATAL ANY)
set(ENV{HOME} "${WORK}")
file(READ "${BLOCKS}/guide-1.txt" printed)
foreach(road IN ITEMS build pkg-config)
  file(COPY "${BLOCKS}/guide/" DESTINATION "${WORK}/${road}")
  execute_process(
    COMMAND sh -e "${BLOCKS}/guide-${road}.sh"
    WORKING_DIRECTORY "${WORK}/${road}"
    RESULT_VARIABLE status
    OUTPUT_VARIABLE output
    ERROR_VARIABLE output)
  string(FIND "${output}" "${printed}" place)
  if(NOT status EQUAL 0 OR place EQUAL -1)
    message(SEND_ERROR "the commands '${road}' ended with ${status}:\n${output}")
  endif()
endforeach()
