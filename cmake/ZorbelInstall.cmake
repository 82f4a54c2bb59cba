# What an installation consists of. The tree may be moved afterwards: the libraries find each other by their own place,
# and so do the package files. Users of the libraries need the component "runtime"; who compiles, "development" as well.
include(CMakePackageConfigHelpers)
write_basic_package_version_file("${CMAKE_CURRENT_BINARY_DIR}/ZorbelConfigVersion.cmake" COMPATIBILITY SameMajorVersion)

# Installs the libraries into `folder`, and what belongs to them, as two components. What has to be told from where it
# lies is made for that folder.
function(zorbel_install folder runtime development)
  set(package "${folder}/cmake/Zorbel")
  set(made "${CMAKE_CURRENT_BINARY_DIR}/package/${development}")
  install(
    TARGETS Zorbel Logger
    EXPORT Zorbel-${development}
    RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT ${runtime} ${ARGN}
    LIBRARY DESTINATION "${folder}" COMPONENT ${runtime} NAMELINK_COMPONENT ${development} ${ARGN}
    ARCHIVE DESTINATION "${folder}" COMPONENT ${development} ${ARGN}
    INCLUDES
    DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
  install(DIRECTORY Core/Zorbel/include/ Core/Logger/include/ DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}"
          COMPONENT ${development} ${ARGN})
  install(FILES Docs/zorbel.xsd DESTINATION "${CMAKE_INSTALL_DATADIR}/zorbel" COMPONENT ${development} ${ARGN})

  install(EXPORT Zorbel-${development} FILE ZorbelTargets.cmake NAMESPACE Zorbel:: DESTINATION "${package}"
          COMPONENT ${development} ${ARGN})
  configure_package_config_file(cmake/ZorbelConfig.cmake.in "${made}/ZorbelConfig.cmake"
                                INSTALL_DESTINATION "${package}" PATH_VARS CMAKE_INSTALL_DATADIR)
  install(FILES "${made}/ZorbelConfig.cmake" "${CMAKE_CURRENT_BINARY_DIR}/ZorbelConfigVersion.cmake"
                cmake/ZorbelPlugin.cmake DESTINATION "${package}" COMPONENT ${development} ${ARGN})

  file(RELATIVE_PATH up "/${folder}/pkgconfig" "/")
  string(REGEX REPLACE "/$" "" up "${up}")
  configure_file(cmake/zorbel.pc.in "${made}/zorbel.pc" @ONLY)
  install(FILES "${made}/zorbel.pc" DESTINATION "${folder}/pkgconfig" COMPONENT ${development} ${ARGN})
endfunction()

zorbel_install("${CMAKE_INSTALL_LIBDIR}" runtime development)
install(FILES LICENSE CHANGELOG.md DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT runtime)
