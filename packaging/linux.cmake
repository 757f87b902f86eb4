# The program in ${home}, and where desktops, shells, manuals and service managers look for it.
install(TARGETS Tarnwerk tarnwerk_window
  RUNTIME DESTINATION ${home} COMPONENT program
  LIBRARY DESTINATION ${home} COMPONENT program)
install(CODE [[
  file(MAKE_DIRECTORY "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/bin")
  file(CREATE_LINK ../lib/tarnwerk/Tarnwerk "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/bin/tarnwerk" SYMBOLIC)
  ]] COMPONENT program)

# The date of manuals and release notes: that of the build, or of SOURCE_DATE_EPOCH.
set(TARNWERK_DATE "" CACHE STRING "The date of the version, if it is not today")
set(DATE ${TARNWERK_DATE})
if(NOT DATE)
  string(TIMESTAMP DATE "%Y-%m-%d" UTC)
endif()
set(VERSION ${TARNWERK_FULL_VERSION})

# fill_in(TEMPLATE.in RESULT): the template with version and date filled in.
function(fill_in template result)
  configure_file(${template} ${result} @ONLY)
endfunction()

set(made ${CMAKE_CURRENT_BINARY_DIR})
fill_in(debian/tarnwerk.1.in ${made}/tarnwerk.1)
fill_in(debian/tarnwerk.zh_CN.1.in ${made}/zh_CN/tarnwerk.1)
# Between Chinese characters groff breaks no line unless it is told where.
file(READ ${made}/zh_CN/tarnwerk.1 manual)
string(REGEX REPLACE "(，|；|、|：|。)" "\\1\\\\:" manual "${manual}")
file(WRITE ${made}/zh_CN/tarnwerk.1 "${manual}")

# The release notes are those of the change log.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
  ${CMAKE_SOURCE_DIR}/CHANGELOG.md make_releases.py)
execute_process(
  COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/make_releases.py ${CMAKE_SOURCE_DIR}/CHANGELOG.md ${VERSION} ${DATE}
  OUTPUT_VARIABLE RELEASES COMMAND_ERROR_IS_FATAL ANY)
fill_in(debian/org.tarnwerk.tarnwerk.metainfo.xml.in ${made}/org.tarnwerk.tarnwerk.metainfo.xml)

install(FILES ${made}/tarnwerk.1 DESTINATION share/man/man1 COMPONENT program)
install(FILES ${made}/zh_CN/tarnwerk.1 DESTINATION share/man/zh_CN/man1 COMPONENT program)
install(FILES ${made}/org.tarnwerk.tarnwerk.metainfo.xml DESTINATION share/metainfo COMPONENT program)
install(FILES debian/tarnwerk.desktop DESTINATION share/applications COMPONENT program)
install(FILES ${CMAKE_SOURCE_DIR}/ui/art/tarnwerk.svg
  DESTINATION share/icons/hicolor/scalable/apps COMPONENT program)
install(FILES debian/tarnwerk.bash-completion
  DESTINATION share/bash-completion/completions RENAME tarnwerk COMPONENT program)
install(FILES debian/tarnwerk.service DESTINATION lib/systemd/user COMPONENT program)
install(FILES debian/examples/tarnwerk.service
  DESTINATION share/doc/tarnwerk/examples COMPONENT program)
install(FILES ${CMAKE_SOURCE_DIR}/LICENSE ${CMAKE_SOURCE_DIR}/docs/third-parties.md
  DESTINATION share/doc/tarnwerk COMPONENT program)
