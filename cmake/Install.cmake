# What belongs to the installed program, and where. `cmake --install` and every package take it from here.

if(WIN32)
  foreach(text README LICENSE)
    set(source ${PROJECT_SOURCE_DIR}/${text})
    if(text STREQUAL "README")
      set(source ${PROJECT_SOURCE_DIR}/packaging/windows/README.txt.in)
    endif()
    configure_file(${source} ${generated}/${text}.txt @ONLY NEWLINE_STYLE CRLF)
    install(FILES ${generated}/${text}.txt DESTINATION .)
  endforeach()
  install(TARGETS tarnwick RUNTIME DESTINATION .)
  set(SETUP_PROGRAM ${PROJECT_BINARY_DIR}/packages/tarnwick-${PROJECT_VERSION}-setup.exe)
  configure_file(${PROJECT_SOURCE_DIR}/packaging/windows/setup.nsi.in ${generated}/setup.nsi @ONLY)
  add_custom_target(setup COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_BINARY_DIR}/packages
    COMMAND makensis -V2 -INPUTCHARSET UTF8 ${generated}/setup.nsi DEPENDS tarnwick VERBATIM)
  return()
endif()

include(GNUInstallDirs)
find_program(GZIP gzip REQUIRED)
set(linux ${PROJECT_SOURCE_DIR}/packaging/linux)

# install_compressed(FILE NAME FOLDER [install() OPTION...])
function(install_compressed file name folder)
  set(compressed ${generated}/${name}.gz)
  add_custom_command(OUTPUT ${compressed} COMMAND ${GZIP} -9nc ${file} > ${compressed} DEPENDS ${file} VERBATIM)
  add_custom_target(${name}.gz ALL DEPENDS ${compressed})
  install(FILES ${compressed} DESTINATION ${folder} ${ARGN})
endfunction()

install(TARGETS tarnwick RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

# A menu finds programs in the system's own folders by name. Elsewhere the entry has the whole path, in quotes, with the
# special characters of the Exec key escaped.
set(TARNWICK_EXEC tarnwick)
if(NOT CMAKE_INSTALL_PREFIX MATCHES "^/usr(/local)?$")
  string(REGEX REPLACE "([\\\\\"`$])" "\\\\\\1" TARNWICK_EXEC "${CMAKE_INSTALL_FULL_BINDIR}/tarnwick")
  string(REPLACE "\\" "\\\\" TARNWICK_EXEC "${TARNWICK_EXEC}")
  string(REPLACE "%" "%%" TARNWICK_EXEC "${TARNWICK_EXEC}")
  set(TARNWICK_EXEC "\"${TARNWICK_EXEC}\"")
endif()
configure_file(${linux}/tarnwick.desktop.in ${generated}/tarnwick.desktop @ONLY)
install(FILES ${generated}/tarnwick.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)

foreach(size 16 32 48 64 128 256)
  install(FILES ${PROJECT_SOURCE_DIR}/packaging/tarnwick-${size}.png RENAME tarnwick.png
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps)
endforeach()
install(FILES ${PROJECT_SOURCE_DIR}/packaging/tarnwick.svg
  DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)

set(metainfo example.belvane.tarnwick.metainfo.xml)
configure_file(${linux}/${metainfo}.in ${generated}/${metainfo} @ONLY)
install(FILES ${generated}/${metainfo} DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)

configure_file(${linux}/tarnwick.1.in ${generated}/tarnwick.1 @ONLY)
install_compressed(${generated}/tarnwick.1 tarnwick.1 ${CMAKE_INSTALL_MANDIR}/man1)
install_compressed(${change_log} changelog ${CMAKE_INSTALL_DOCDIR})

# What only the Debian package has.
set(debian ${PROJECT_SOURCE_DIR}/packaging/debian)
set(only_debian COMPONENT debian EXCLUDE_FROM_ALL)
install(FILES ${debian}/copyright DESTINATION ${CMAKE_INSTALL_DOCDIR} ${only_debian})
install(FILES ${debian}/lintian-overrides RENAME tarnwick DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides
  ${only_debian})
execute_process(COMMAND date -R -u -d "${RELEASE_DATE} 12:00" OUTPUT_VARIABLE RELEASE_MAIL_DATE
  OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
configure_file(${debian}/changelog.in ${generated}/changelog-debian @ONLY)
install_compressed(${generated}/changelog-debian changelog.Debian ${CMAKE_INSTALL_DOCDIR} ${only_debian})
