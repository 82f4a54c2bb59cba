# What every target of the project is compiled with. Warnings stay private to the build; only the presets make them
# errors.
function(zorbel_component target)
  target_compile_features(${target} PRIVATE cxx_std_20)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
  set_target_properties(
    ${target}
    PROPERTIES CXX_EXTENSIONS OFF
               CXX_VISIBILITY_PRESET hidden
               VISIBILITY_INLINES_HIDDEN ON
               POSITION_INDEPENDENT_CODE ON)
  if(WIN32)
    # Libraries and plug-ins are named as documents name them; only import libraries keep the compiler's prefix.
    set_target_properties(${target} PROPERTIES PREFIX "")
  endif()
endfunction()

# Makes a shared library's interface versioned and complete: a SONAME, and no symbol left for others to define.
function(zorbel_shared_library target)
  set_target_properties(${target} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
  if(UNIX AND NOT (ZORBEL_SANITIZE AND CMAKE_CXX_COMPILER_ID MATCHES Clang))
    target_link_options(${target} PRIVATE -Wl,-z,defs)
  endif()
endfunction()
