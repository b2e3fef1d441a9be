# Makes a source file that holds the pages of the report.
# Usage: cmake -D FOLDER=src/report_page -D OUTPUT=... -P EmbedPages.cmake
include(${FOLDER}/pages.cmake)
set(source "// Made from src/report_page/page when the program is built.\n#include \"report_page/embedded_pages.h\"\n\n"
  "namespace kiv::report::embedded {\n")
string(CONCAT source ${source})
foreach(name ${embedded_texts})
  set(bytes "")
  foreach(file ${${name}})
    file(READ ${FOLDER}/page/${file} content HEX)
    string(APPEND bytes "${content}")
  endforeach()
  string(REGEX REPLACE "(..)" "0x\\1," numbers "${bytes}")
  string(APPEND source "namespace {\nconstexpr unsigned char ${name}_bytes[] = {${numbers}};\n}  // namespace\n"
    "const std::string_view ${name}(reinterpret_cast<const char*>(${name}_bytes), sizeof(${name}_bytes));\n")
endforeach()
string(APPEND source "}  // namespace kiv::report::embedded\n")
file(WRITE ${OUTPUT} "${source}")
