#include "apps/kivsys/commands/selection.h"

#include <algorithm>
#include <iostream>
#include <new>
#include <optional>
#include <sstream>

#include "apps/kivsys/commands/folder_locks.h"
#include "apps/kivsys/exit_status.h"
#include "input/file_names.h"
#include "platform/console/stop_signals.h"

namespace kiv {
namespace {

int refuse(const std::string& reason) {
  std::cerr << "kivsys: " << reason << '\n';
  return exit_status::wrongUsage;
}

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

bool holdsLineEnd(const std::string& name) {
  return name.find_first_of("\r\n") != std::string::npos;
}

/// The folder of the first page that a names file lists, with its separator at the end.
std::string folderListedFirst(NativeSystem& system, const std::string& namesFile) {
  constexpr std::size_t mostBytes = 65536;
  std::istringstream lines(readWhole(system, namesFile, mostBytes).value_or(""));
  for (std::string line; std::getline(lines, line);) {
    if (!line.empty() && !line.starts_with('*') && line != "\r") {
      return justPath(NativeSystem::coreName(line));
    }
  }
  return "";
}

/// The folders as the disk names them.
std::vector<std::string> toBeLocked(NativeSystem& system, const WrittenFolders& written, const std::string& firstPage,
                                    const std::string& namesFile) {
  std::vector<std::string> folders;
  if (written.report) {
    folders.emplace_back(".");
  }
  if (written.results) {
    const std::string given = written.firstResult.empty() ? firstPage : written.firstResult;
    const std::string folder = given.empty() ? folderListedFirst(system, namesFile) : justPath(given);
    folders.push_back(folder.empty() ? "." : system.diskName(folder));
  }
  return folders;
}

/// The selection on its way to the command.
class SelectionRun {
 public:
  SelectionRun(ConsoleHost& console, const Selection& selection, const WrittenFolders& written)
      : console_(console), selection_(selection), written_(written) {}

  int run(const std::function<int(const std::string& namesFile)>& command);

 private:
  std::vector<std::string> pages() const;

  ConsoleHost& console_;
  const Selection& selection_;
  const WrittenFolders& written_;
};

/// The full names of the page files.
std::vector<std::string> SelectionRun::pages() const {
  std::vector<std::string> pages;
  for (const std::string& typed : selection_.pages) {
    for (const std::string& page : NativeSystem::filesMatching(typed)) {
      pages.push_back(console_.system().fullName(page));
    }
  }
  return pages;
}

int SelectionRun::run(const std::function<int(const std::string& namesFile)>& command) {
  NativeSystem& system = console_.system();
  std::string namesFile = selection_.names.empty() ? "" : coreNameOf(system, selection_.names);
  const std::vector<std::string> pages = this->pages();
  if (std::any_of(pages.begin(), pages.end(), holdsLineEnd)) {
    return refuse("a page file whose name holds a line end cannot be listed in a names file");
  }
  if (!selection_.folder.empty() && !system.enterFolder(selection_.folder)) {
    return refuse("cannot enter the folder " + selection_.folder);
  }
  FolderLocks locks;
  if (!locks.take(toBeLocked(system, written_, pages.empty() ? "" : pages.front(), namesFile), written_.wait)) {
    return exit_status::busyFolder;
  }
  std::optional<TemporaryNamesFile> temporary;
  if (selection_.names.empty()) {
    namesFile = temporary.emplace(system, pages).name();
    if (namesFile.empty()) {
      std::cerr << "kivsys: cannot make a names file in the folder for temporary files\n";
      return exit_status::critical;
    }
  }
  return command(namesFile);
}

}  // namespace

int runOnSelection(ConsoleHost& console, const Selection& selection,
                   const std::function<int(const std::string& namesFile)>& run, const WrittenFolders& written) {
  noteStopSignals(SecondSignal::isNoted);
  int status = exit_status::critical;
  const auto ended = exitCodeOf(console.user(), [&] { status = SelectionRun(console, selection, written).run(run); });
  if (const int signal = stopSignal(); signal != 0) {
    NativeSystem::writeError("kivsys: ended by " + signalName(signal) +
                             "; written: " + console.system().writtenWords() + "\n");
    return exit_status::afterSignal(signal);
  }
  return ended.value_or(status);
}

}  // namespace kiv
