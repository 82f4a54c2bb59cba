# Makes the ZIP of the build folder BUILD, unpacks it in an empty folder below WORK and runs an example from there, whose
# output is recorded in RECORDED. Nothing but the system's own libraries is to be found outside.
file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}/unpacked")
execute_process(COMMAND "${CMAKE_CPACK_COMMAND}" -G ZIP -B "${WORK}" WORKING_DIRECTORY "${BUILD}" OUTPUT_QUIET
                COMMAND_ERROR_IS_FATAL ANY)
file(GLOB archive "${WORK}/*.zip")
file(ARCHIVE_EXTRACT INPUT "${archive}" DESTINATION "${WORK}/unpacked")
file(GLOB root "${WORK}/unpacked/*")

foreach(file IN ITEMS bin/Zorbel.dll bin/Logger.dll bin/libstdc++-6.dll lib/libZorbel.dll.a lib/libLogger.dll.a
                      include/Zorbel/Zorbel.h include/Logging/Logging.h lib/cmake/Zorbel/ZorbelConfig.cmake)
  if(NOT EXISTS "${root}/${file}")
    message(SEND_ERROR "The package lacks ${file}")
  endif()
endforeach()

set(PROGRAM ${EMULATOR} "${root}/bin/motion-demo.exe")
include("${CMAKE_CURRENT_LIST_DIR}/../Examples/RunAndCompare.cmake")
