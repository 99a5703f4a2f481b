# The packages that CPack makes: a Debian package of the Linux program, a zip archive of the Windows program.

set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "Belvane Software")
set(CPACK_PACKAGE_CONTACT "Belvane Software <tarnwick@belvane.example>")
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/SameTimes.cmake)

if(WIN32)
  set(CPACK_GENERATOR ZIP)
  set(CPACK_PACKAGE_FILE_NAME tarnwick-${PROJECT_VERSION}-windows)
else()
  set(CPACK_GENERATOR DEB)
  set(CPACK_STRIP_FILES ON)
  set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
  set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
  set(CPACK_DEBIAN_PACKAGE_SECTION web)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_PACKAGE_DEPENDS "fonts-dejavu-core, xdg-utils")
  set(CPACK_DEBIAN_PACKAGE_RECOMMENDS qt6-wayland)
  set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "Every favorite is an internet shortcut file. Tarnwick connects to the site
of each and lists those that are not found, forbidden, unauthorized, silent or
out of reach. It also lists favorites that point to the same link, without
going online. From either list a favorite can be removed after a question.")
  set(CPACK_INSTALL_CMAKE_PROJECTS
    "${PROJECT_BINARY_DIR};tarnwick;ALL;/" "${PROJECT_BINARY_DIR};tarnwick;debian;/")
endif()
include(CPack)
