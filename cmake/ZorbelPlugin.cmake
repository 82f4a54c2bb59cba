# zorbel_add_plugin(<name> <source>...): a plug-in module that documents name as "<name>" on every system. Of its own
# code it exports what its sources mark for export, such as the wrapper makers. On Linux there is beside that what modules
# may share: type information of the interfaces, by which casts and handlers know them in every module, and code and
# type information of the standard library's templates.
function(zorbel_add_plugin name)
  add_library(${name} MODULE ${ARGN})
  target_compile_features(${name} PRIVATE cxx_std_17)
  target_link_libraries(${name} PRIVATE Zorbel::Zorbel)
  set_target_properties(${name} PROPERTIES CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
  if(WIN32)
    set_target_properties(${name} PROPERTIES PREFIX "")
  endif()
endfunction()
