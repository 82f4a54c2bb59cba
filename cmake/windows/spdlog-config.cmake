# spdlog as headers alone, beside this file's prefix.
include(CMakeFindDependencyMacro)
find_dependency(fmt)
if(NOT TARGET spdlog::spdlog_header_only)
  add_library(spdlog::spdlog_header_only INTERFACE IMPORTED)
  target_include_directories(spdlog::spdlog_header_only INTERFACE "${CMAKE_CURRENT_LIST_DIR}/../../../include")
  target_compile_definitions(spdlog::spdlog_header_only INTERFACE SPDLOG_FMT_EXTERNAL)
  target_link_libraries(spdlog::spdlog_header_only INTERFACE fmt::fmt-header-only)
endif()
