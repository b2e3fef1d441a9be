# What `cmake --install` installs beside the console program: its manual page, completions, documents and the example.
include(GNUInstallDirs)
set(CMAKE_INSTALL_DOCDIR ${CMAKE_INSTALL_DATAROOTDIR}/doc/kivsys)

# The program prints its manual page and completions. Without name and time in its header, the compressed page is
# reproducible.
set(generated ${PROJECT_BINARY_DIR}/installed)
file(MAKE_DIRECTORY ${generated})
add_custom_command(OUTPUT ${generated}/kivsys.1.gz ${generated}/kivsys ${generated}/_kivsys ${generated}/kivsys.fish
  COMMAND kivsys man > ${generated}/kivsys.1
  COMMAND gzip -9 -n -f ${generated}/kivsys.1
  COMMAND kivsys completions bash > ${generated}/kivsys
  COMMAND kivsys completions zsh > ${generated}/_kivsys
  COMMAND kivsys completions fish > ${generated}/kivsys.fish
  DEPENDS kivsys VERBATIM)
add_custom_target(kivsys_documents ALL DEPENDS ${generated}/kivsys.1.gz)
install(FILES ${generated}/kivsys.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${generated}/kivsys DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/bash-completion/completions)
install(FILES ${generated}/_kivsys DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/zsh/vendor-completions)
install(FILES ${generated}/kivsys.fish DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/fish/vendor_completions.d)

# What every Debian package has: who may do what with it, and its history.
add_custom_command(OUTPUT ${generated}/changelog.gz
  COMMAND gzip -9 -n -c ${CMAKE_CURRENT_LIST_DIR}/debian/changelog > ${generated}/changelog.gz
  DEPENDS ${CMAKE_CURRENT_LIST_DIR}/debian/changelog VERBATIM)
add_custom_target(kivsys_changelog ALL DEPENDS ${generated}/changelog.gz)
install(FILES ${CMAKE_CURRENT_LIST_DIR}/debian/copyright ${generated}/changelog.gz DESTINATION ${CMAKE_INSTALL_DOCDIR})

install(TARGETS kivsys RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES docs/cli.md docs/cli-pages.md docs/cli-repair.md docs/cli-report.md
  docs/cli-rules.md docs/conversion.md docs/json.md docs/json-schema.json
    docs/json-schema-parts.json docs/mus-format.md docs/music.md docs/page-text.md docs/problems.md docs/proof.md
    docs/repair-methods.md docs/repair.md docs/report-format.md docs/rest-staves.md
  DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs)
file(GLOB drawings CONFIGURE_DEPENDS docs/pictures/rest-staves-*.svg)
install(FILES ${drawings} DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs/pictures)
install(FILES examples/README.md DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples)
install(DIRECTORY examples/beethoven-9 examples/broken-minuet examples/silent-march DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples)
