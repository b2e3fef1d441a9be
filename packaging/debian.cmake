# The console program as a Debian package.
include(GNUInstallDirs)
set(CMAKE_INSTALL_DOCDIR ${CMAKE_INSTALL_DATAROOTDIR}/doc/kivsys)

# A manual page would go to man1 of ${CMAKE_INSTALL_MANDIR}, a completion to bash-completion/completions of
# ${CMAKE_INSTALL_DATAROOTDIR}, where man and bash look for them.
install(TARGETS kivsys RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES docs/conversion.md docs/mus-format.md docs/page-text.md docs/report-format.md
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
