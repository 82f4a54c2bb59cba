# Installs the packages into a system of their own, which has no other package and no root.
include("${CMAKE_CURRENT_LIST_DIR}/UseExample.cmake")
file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}/packages" "${WORK}/bin" "${WORK}/root/var/lib/dpkg/updates" "${WORK}/root/var/lib/dpkg/info")
file(TOUCH "${WORK}/root/var/lib/dpkg/status")

# The packages' scripts call ldconfig, which would work on the system that runs this test.
file(WRITE "${WORK}/bin/ldconfig" "#!/bin/sh\n")
file(CHMOD "${WORK}/bin/ldconfig" PERMISSIONS OWNER_READ OWNER_EXECUTE)
set(ENV{PATH} "${WORK}/bin:$ENV{PATH}")

execute_process(COMMAND ${CMAKE_CPACK_COMMAND} --config "${BUILD}/CPackConfig.cmake" -G DEB -B "${WORK}/packages"
                OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
file(GLOB packages "${WORK}/packages/*.deb")
set(dpkg fakeroot dpkg "--root=${WORK}/root" "--log=${WORK}/log" --force-not-root --force-depends
         --force-script-chrootless)
run(${dpkg} --install ${packages})
foreach(file IN ITEMS lib/${ARCHITECTURE}/libZorbel.so.${MAJOR} lib/${ARCHITECTURE}/pkgconfig/zorbel.pc
                      share/doc/libzorbel${MAJOR}/copyright share/doc/libzorbel-dev/copyright)
  if(NOT EXISTS "${WORK}/root/usr/${file}")
    message(SEND_ERROR "the packages lack ${file}")
  endif()
endforeach()
file(GLOB documents RELATIVE "${WORK}/root/usr/share/doc" "${WORK}/root/usr/share/doc/*")
if(NOT documents STREQUAL "libzorbel-dev;libzorbel${MAJOR}")
  message(SEND_ERROR "the packages' documents are in ${documents}")
endif()
use_example("${WORK}/root/usr")

run(${dpkg} --purge libzorbel-dev libzorbel${MAJOR})
file(GLOB_RECURSE left LIST_DIRECTORIES false "${WORK}/root/usr/*")
if(left)
  message(FATAL_ERROR "removing the packages left ${left}")
endif()
