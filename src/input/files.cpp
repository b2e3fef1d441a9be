#include "input/files.h"

#include "platform/external_programs.h"

namespace kiv {

std::unique_ptr<InputFile> openExisting(Host& host, const std::string& filename) {
  return filename.find("\\\\") == std::string::npos ? host.openInput(filename) : nullptr;
}

bool FileExists(Host& host, const std::string& filename) {
  return openExisting(host, filename) != nullptr;
}

void ViewFile(Host& host, const std::string& s) {
  if (!host.showText(s)) {
    ExecCmd(host, "Notepad " + s);
  }
}

}  // namespace kiv
