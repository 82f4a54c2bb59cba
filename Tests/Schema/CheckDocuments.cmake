# Checks the documents of the folders VALID and INVALID against SCHEMA. With PROGRAM, a test program writes them into
# the folder RECORDED first.
if(PROGRAM)
  file(REMOVE_RECURSE "${RECORDED}")
  file(MAKE_DIRECTORY "${RECORDED}/regular" "${RECORDED}/odd")
  # The tests of loading use a folder of fixed name, which those running beside this one use as well.
  execute_process(
    COMMAND ${CMAKE_COMMAND} -E env "ZORBEL_TEST_DOCUMENTS=${RECORDED}" "${PROGRAM}" --gtest_brief=1
            --gtest_filter=-Loading.*
    WORKING_DIRECTORY "${RECORDED}"
    RESULT_VARIABLE status
    OUTPUT_VARIABLE output)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${PROGRAM} ended with ${status}:\n${output}")
  endif()
endif()

# xmllint has to end with one of the numbers `expected` for every document of the folders.
function(check expected)
  foreach(folder IN LISTS ARGN)
    file(GLOB_RECURSE documents "${folder}/*.xml")
    if(NOT documents)
      message(FATAL_ERROR "There are no documents in ${folder}")
    endif()
    foreach(document IN LISTS documents)
      execute_process(
        COMMAND "${XMLLINT}" --noout --huge --schema "${SCHEMA}" "${document}"
        RESULT_VARIABLE status
        ERROR_VARIABLE output)
      if(NOT status MATCHES "^(${expected})$")
        file(READ "${document}" text)
        message(SEND_ERROR "xmllint ended with ${status}, not with ${expected}:\n${output}${text}")
      endif()
    endforeach()
  endforeach()
endfunction()

check(0 ${VALID})
check("1|3" ${INVALID}) # no XML at all, or against the schema
