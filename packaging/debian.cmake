# The console program as a Debian package.
include(GNUInstallDirs)
set(CMAKE_INSTALL_DOCDIR ${CMAKE_INSTALL_DATAROOTDIR}/doc/kivsys)

# The program tells its manual page and completions itself. Without name and time in its header, the compressed page is
# the same whenever it is made.
set(told ${PROJECT_BINARY_DIR}/told)
file(MAKE_DIRECTORY ${told})
add_custom_command(OUTPUT ${told}/kivsys.1.gz ${told}/kivsys ${told}/_kivsys ${told}/kivsys.fish
  COMMAND kivsys man > ${told}/kivsys.1
  COMMAND gzip -9 -n -f ${told}/kivsys.1
  COMMAND kivsys completions bash > ${told}/kivsys
  COMMAND kivsys completions zsh > ${told}/_kivsys
  COMMAND kivsys completions fish > ${told}/kivsys.fish
  DEPENDS kivsys VERBATIM)
add_custom_target(kivsys_told ALL DEPENDS ${told}/kivsys.1.gz)
install(FILES ${told}/kivsys.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${told}/kivsys DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/bash-completion/completions)
install(FILES ${told}/_kivsys DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/zsh/vendor-completions)
install(FILES ${told}/kivsys.fish DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/fish/vendor_completions.d)

install(TARGETS kivsys RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES docs/conversion.md docs/json.md docs/json-schema.json docs/mus-format.md docs/page-text.md docs/proof.md
    docs/report-format.md
  DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES examples/README.md DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples)
install(DIRECTORY examples/beethoven-9 DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_PACKAGE_NAME kivsys)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Finds out whether all systems of a piece of music have the same instruments
in the same order, reports structural problems with file and place, and
converts the pages into one page per system with a common layout.")
