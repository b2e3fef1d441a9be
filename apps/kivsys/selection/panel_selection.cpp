#include "apps/kivsys/selection/panel_selection.h"

#include <algorithm>
#include <new>
#include <optional>

#include "apps/kivsys/exit_status.h"
#include "platform/bounded_file.h"
#include "platform/console/error_line.h"

namespace kiv {
namespace {

/// The names file made from the page names on the command line, deleted after the run.
class TemporaryNamesFile {
 public:
  TemporaryNamesFile(NativeSystem& system, const std::vector<std::string>& fullNames) : system_(system) {
    std::string lines;
    for (const std::string& name : fullNames) {
      lines += name + " 1\r\n";
    }
    name_ = system_.makeTemporaryFile(lines);
  }
  TemporaryNamesFile(const TemporaryNamesFile&) = delete;
  TemporaryNamesFile& operator=(const TemporaryNamesFile&) = delete;
  ~TemporaryNamesFile() {
    try {
      if (!name_.empty()) {
        system_.deleteFile(name_);
      }
    } catch (const std::bad_alloc&) {
      // Without the memory for a name, the file stays among the temporary ones.
    }
  }

  /// "" when it could not be made.
  const std::string& name() const { return name_; }

 private:
  NativeSystem& system_;
  std::string name_;
};

/// The name of a file that the user typed, before the run's folder is entered. One that does not exist stays as it was
/// typed, to be looked for in the run's folder.
std::string coreNameOf(NativeSystem& system, const std::string& typed) {
  const std::string full = system.fullName(typed);
  return system.openInput(full) ? full : NativeSystem::coreName(typed);
}

/// Whether a file is larger than a names file can be.
bool isTooLarge(NativeSystem& system, const std::string& namesFile) {
  const auto file = system.openInput(namesFile);
  return file && isLarger(*file, most_bytes::namesFile);
}

bool holdsLineEnd(const std::string& name) {
  return name.find_first_of("\r\n") != std::string::npos;
}

}  // namespace

int runLikePanel(ConsoleHost& console, const Selection& selection,
                 const std::function<int(const std::string& namesFile)>& run) {
  NativeSystem& system = console.system();
  std::string namesFile = selection.names.empty() ? "" : coreNameOf(system, selection.names);
  std::vector<std::string> pages;
  for (const std::string& typed : selection.pages) {
    for (const std::string& page : NativeSystem::filesMatching(typed)) {
      pages.push_back(system.fullName(page));
    }
  }
  if (std::any_of(pages.begin(), pages.end(), holdsLineEnd)) {
    return refuse({"a page file whose name holds a line end cannot be listed in a names file"});
  }
  if (!selection.folder.empty() && !system.enterFolder(selection.folder)) {
    return refuse({"cannot enter the folder " + selection.folder});
  }
  std::optional<TemporaryNamesFile> temporary;
  if (selection.names.empty()) {
    namesFile = temporary.emplace(system, pages).name();
    if (namesFile.empty()) {
      printError("cannot make a names file in the folder for temporary files");
      return exit_status::critical;
    }
  }
  if (isTooLarge(system, namesFile)) {
    printError(namesFile + " " + tooLarge(most_bytes::namesFile, "a names file"));
    return exit_status::critical;
  }
  return run(namesFile);
}

}  // namespace kiv
