#include "input/files.h"

#include "platform/external_programs.h"

namespace kiv {

std::unique_ptr<InputFile> openExisting(Files& files, const std::string& filename) {
  return filename.find("\\\\") == std::string::npos ? files.openInput(filename) : nullptr;
}

bool FileExists(Files& files, const std::string& filename) {
  return openExisting(files, filename) != nullptr;
}

void ViewFile(const Host& host, const std::string& s) {
  if (!host.user.showText(s)) {
    ExecCmd(host, "Notepad " + s);
  }
}

}  // namespace kiv
