# Installs the packages into a system of their own, which has no other package and no root.
include("${CMAKE_CURRENT_LIST_DIR}/UseExample.cmake")
file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}/packages" "${WORK}/root/var/lib/dpkg/updates" "${WORK}/root/var/lib/dpkg/info")
file(TOUCH "${WORK}/root/var/lib/dpkg/status")

execute_process(COMMAND ${CMAKE_CPACK_COMMAND} --config "${BUILD}/CPackConfig.cmake" -G DEB -B "${WORK}/packages"
                OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
file(GLOB packages "${WORK}/packages/*.deb")
set(dpkg fakeroot dpkg "--root=${WORK}/root" "--log=${WORK}/log" --force-not-root --force-depends
         --force-script-chrootless)
run(${dpkg} --install ${packages})
file(GLOB_RECURSE libraries "${WORK}/root/usr/libZorbel.so.${MAJOR}")
if(NOT libraries)
  message(FATAL_ERROR "the packages hold no library:\n${output}")
endif()
use_example("${WORK}/root/usr")

run(${dpkg} --purge libzorbel-dev libzorbel${MAJOR})
file(GLOB_RECURSE left LIST_DIRECTORIES false "${WORK}/root/usr/*")
if(left)
  message(FATAL_ERROR "removing the packages left ${left}")
endif()
