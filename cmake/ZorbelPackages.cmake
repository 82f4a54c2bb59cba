# Packages, made with cpack in the build folder: on Debian one of what programs run with, and one of what they are
# compiled with; on Windows a ZIP.
set(CPACK_PACKAGE_NAME zorbel)
set(CPACK_PACKAGE_VENDOR "The Zorbel developers")
set(CPACK_PACKAGE_CONTACT "The Zorbel developers <zorbel@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_RESOURCE_FILE_LICENSE "${PROJECT_SOURCE_DIR}/LICENSE")
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
if(WIN32)
  set(CPACK_GENERATOR ZIP)
  if(ZORBEL_BUILD_EXAMPLES)
    install(
      TARGETS motion-demo motion smallest smallest-plugin local-classes runtime-services embedded-document host-logger
      RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT examples
      LIBRARY DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT examples)
    install(DIRECTORY Examples/Motion/documents/ DESTINATION "${CMAKE_INSTALL_BINDIR}/motion-documents"
            COMPONENT examples)
  endif()
else()
  set(CPACK_GENERATOR DEB)
  set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
  set(CPACK_COMPONENTS_ALL runtime development)
  set(CPACK_DEB_COMPONENT_INSTALL ON)
  set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libzorbel${PROJECT_VERSION_MAJOR})
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libzorbel-dev)
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
      "libzorbel${PROJECT_VERSION_MAJOR} (= ${PROJECT_VERSION})")
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)
endif()
include(CPack)
