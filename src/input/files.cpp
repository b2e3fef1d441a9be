#include "input/files.h"

#include "platform/external_programs.h"
#include "platform/separators.h"

namespace kiv {

std::unique_ptr<InputFile> openExisting(Files& files, Machine& machine, const std::string& filename) {
  return hasTwoBackslashes(machine, filename) ? nullptr : files.openInput(filename);
}

bool existingWillOpen(Files& files, Machine& machine, const std::string& filename, Fetch fetch) {
  return !hasTwoBackslashes(machine, filename) && files.willOpen(filename, fetch);
}

bool FileExists(const Host& host, const std::string& filename) {
  return openExisting(host.files, host.machine, filename) != nullptr;
}

void ViewFile(const Host& host, const std::string& s) {
  if (!host.user.showText(s)) {
    ExecCmd(host, "Notepad " + s);
  }
}

}  // namespace kiv
