#include "analysis/naming_problem.h"

namespace kiv {

void refuseFileName(Host& host, const std::string& musFileName) {
  host.fatal("File naming problem: " + musFileName + "\r\nCurrent folder = " + host.currentFolder() +
             "\r\nFilenames required for this program must have this format:\r\n\r\n"
             "    <letter(s)><digit(s)><optionally one sequence letter>.<suffix>\r\n\r\nRename your input.");
}

}  // namespace kiv
