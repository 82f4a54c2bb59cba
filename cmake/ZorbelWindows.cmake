# What a build for Windows with MinGW-w64 takes along: the compiler's run-time libraries, beside the programs in the build
# tree and in the package.
foreach(name IN ITEMS libstdc++-6 libgcc_s_seh-1 libwinpthread-1)
  execute_process(
    COMMAND "${CMAKE_CXX_COMPILER}" -print-file-name=${name}.dll
    OUTPUT_VARIABLE file
    OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  if(NOT IS_ABSOLUTE "${file}")
    message(FATAL_ERROR "The compiler does not know its run-time library ${name}.dll")
  endif()
  file(COPY "${file}" DESTINATION "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
  install(FILES "${file}" DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT runtime)
endforeach()
