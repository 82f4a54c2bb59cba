# fmt as headers alone, beside this file's prefix.
if(NOT TARGET fmt::fmt-header-only)
  add_library(fmt::fmt-header-only INTERFACE IMPORTED)
  target_include_directories(fmt::fmt-header-only INTERFACE "${CMAKE_CURRENT_LIST_DIR}/../../../include")
  target_compile_definitions(fmt::fmt-header-only INTERFACE FMT_HEADER_ONLY=1)
endif()
