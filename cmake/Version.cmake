# What is written out of the project's version: the header of the program, and the date of its newest release.

set(generated ${PROJECT_BINARY_DIR}/generated)
set(RELEASE_MINOR 0${PROJECT_VERSION_MINOR})
string(REGEX MATCH "..$" RELEASE_MINOR ${RELEASE_MINOR})
configure_file(${PROJECT_SOURCE_DIR}/src/Version.h.in ${generated}/Version.h @ONLY)

# The change log begins with the version that is built.
set(change_log ${PROJECT_SOURCE_DIR}/CHANGELOG.md)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${change_log})
file(STRINGS ${change_log} releases REGEX "^## ")
list(GET releases 0 newest)
if(NOT newest MATCHES "^## ([0-9.]+), ([0-9]+-[0-9]+-[0-9]+)$" OR NOT CMAKE_MATCH_1 VERSION_EQUAL PROJECT_VERSION)
  message(FATAL_ERROR "CHANGELOG.md has to begin with \"## ${PROJECT_VERSION}, YEAR-MONTH-DAY\"")
endif()
set(RELEASE_DATE ${CMAKE_MATCH_2})
