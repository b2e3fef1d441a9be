# The Windows programs: as an installer by CPack, and, from the same rules, as a folder for the portable zip.

# kiv_install_text(FILE FOLDER [NAME]): a text file with the line ends that Windows programs expect.
function(kiv_install_text file folder)
  cmake_path(GET file FILENAME name)
  if(ARGC GREATER 2)
    set(name ${ARGV2})
  endif()
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
  file(READ ${file} text)
  string(REPLACE "\r\n" "\n" text "${text}")
  string(REPLACE "\n" "\r\n" text "${text}")
  set(converted ${PROJECT_BINARY_DIR}/texts/${folder}/${name})
  file(WRITE ${converted} "${text}")
  install(FILES ${converted} DESTINATION ${folder})
endfunction()

install(TARGETS kivsystem kivsys kivnames kivole kivfoldr RUNTIME DESTINATION .)
foreach(name IN ITEMS KIVPROJ.PRO README.txt "Start KivSystem.cmd")
  kiv_install_text("${CMAKE_CURRENT_LIST_DIR}/windows/${name}" .)
endforeach()
foreach(name IN ITEMS cli.md cli-pages.md cli-repair.md
    cli-rules.md user-guide.md conversion.md json.md json-schema.json
    json-schema-parts.json mus-format.md music.md page-text.md problems.md proof.md repair-methods.md repair.md
    report-format.md cli-report.md rest-staves.md)
  kiv_install_text(docs/${name} docs)
endforeach()
kiv_install_text(CHANGELOG.md .)
# The licenses of the libraries within the programs ask for this.
kiv_install_text(packaging/debian/copyright . COPYRIGHT.txt)
# Those of the user guide.
foreach(picture IN ITEMS analyzed created panel result)
  install(FILES docs/pictures/${picture}.png DESTINATION docs/pictures)
endforeach()
file(GLOB drawings CONFIGURE_DEPENDS docs/pictures/rest-staves-*.svg)
install(FILES ${drawings} DESTINATION docs/pictures)

# packaging/package.sh has the native program print what PowerShell completes.
install(DIRECTORY ${PROJECT_BINARY_DIR}/completions DESTINATION . OPTIONAL)

# The example as page texts, and as pages, which packaging/package.sh builds from them with the native program.
kiv_install_text(examples/README.md examples)
file(GLOB texts RELATIVE ${PROJECT_SOURCE_DIR} CONFIGURE_DEPENDS examples/beethoven-9/*.txt
  examples/beethoven-9/results/*.txt examples/broken-minuet/*.txt examples/silent-march/*.txt)
foreach(text IN LISTS texts)
  cmake_path(GET text PARENT_PATH folder)
  kiv_install_text(${text} ${folder})
endforeach()
install(DIRECTORY ${PROJECT_BINARY_DIR}/pages/ DESTINATION examples OPTIONAL)

set(CPACK_GENERATOR NSIS)
set(CPACK_PACKAGE_FILE_NAME KivSystem-${PROJECT_VERSION}-setup)
set(CPACK_PACKAGE_INSTALL_DIRECTORY KivSystem)
set(CPACK_NSIS_PACKAGE_NAME KivSystem)
set(CPACK_NSIS_MUI_ICON ${PROJECT_SOURCE_DIR}/apps/kivsystem/icon.ico)
set(CPACK_NSIS_MUI_UNIICON ${CPACK_NSIS_MUI_ICON})
# The template that comes with CPack is for all users of a machine and asks for an administrator.
set(CPACK_MODULE_PATH ${CMAKE_CURRENT_LIST_DIR}/windows)
