# What an installation consists of. The tree may be moved afterwards: the libraries find each other by their own place,
# and so do the package files. Users of the libraries need the component "runtime"; who compiles, "development" as well.
include(CMakePackageConfigHelpers)

set(zorbel_package_folder "${CMAKE_INSTALL_LIBDIR}/cmake/Zorbel")

install(
  TARGETS Zorbel Logger
  EXPORT ZorbelTargets
  RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT runtime
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT runtime NAMELINK_COMPONENT development
  ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT development
  INCLUDES
  DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
install(DIRECTORY Core/Zorbel/include/ Core/Logger/include/ DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}"
        COMPONENT development)
install(FILES Docs/zorbel.xsd DESTINATION "${CMAKE_INSTALL_DATADIR}/zorbel" COMPONENT development)
install(FILES LICENSE CHANGELOG.md DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT runtime)

install(EXPORT ZorbelTargets NAMESPACE Zorbel:: DESTINATION "${zorbel_package_folder}" COMPONENT development)
configure_package_config_file(
  cmake/ZorbelConfig.cmake.in "${CMAKE_CURRENT_BINARY_DIR}/ZorbelConfig.cmake"
  INSTALL_DESTINATION "${zorbel_package_folder}"
  PATH_VARS CMAKE_INSTALL_DATADIR)
write_basic_package_version_file("${CMAKE_CURRENT_BINARY_DIR}/ZorbelConfigVersion.cmake" COMPATIBILITY SameMajorVersion)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/ZorbelConfig.cmake" "${CMAKE_CURRENT_BINARY_DIR}/ZorbelConfigVersion.cmake"
              cmake/ZorbelPlugin.cmake DESTINATION "${zorbel_package_folder}" COMPONENT development)

# The folders as seen from the file's own, lib/pkgconfig.
file(RELATIVE_PATH pc_libdir "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/${CMAKE_INSTALL_LIBDIR}")
file(RELATIVE_PATH pc_includedir "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/${CMAKE_INSTALL_INCLUDEDIR}")
set(ZORBEL_PC_LIBDIR "\${pcfiledir}/${pc_libdir}")
set(ZORBEL_PC_INCLUDEDIR "\${pcfiledir}/${pc_includedir}")
configure_file(cmake/zorbel.pc.in "${CMAKE_CURRENT_BINARY_DIR}/zorbel.pc" @ONLY)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/zorbel.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig"
        COMPONENT development)
