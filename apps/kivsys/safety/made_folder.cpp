#include "apps/kivsys/safety/made_folder.h"

#include <utility>

#include "platform/console/console_system.h"
#include "platform/console/printable.h"
#include "platform/native_file.h"
#include "platform/separators.h"

namespace kiv {
namespace {

/// The folder above; "." for a name alone.
std::string above(Machine& machine, const std::string& path) {
  const std::string folder = folderOfPath(machine, path);
  return folder.empty() ? "." : folder;
}

}  // namespace

PlannedFolder::PlannedFolder(Machine& machine, std::string path, std::string typed)
    : typed_(std::move(typed)),
      path_(withoutEndSeparators(machine, std::move(path))),
      above_(above(machine, path_)),
      isMissing_(kindOf(path_) == PathKind::missing) {}

std::optional<std::string> PlannedFolder::refusal() const {
  const PathKind kind = kindOf(path_);
  if (kind == PathKind::folder) {
    return std::nullopt;
  }
  if (kind != PathKind::missing) {
    return "not a folder: " + typed_;
  }
  return kindOf(above_) == PathKind::folder
             ? std::nullopt
             : std::optional("cannot make the folder " + typed_ + ", as the one above it does not exist");
}

std::optional<std::string> PlannedFolder::make(ChangeJournal* journal, ConsoleUser& user) const {
  if (kindOf(path_) == PathKind::folder) {
    return std::nullopt;
  }
  auto failure = journal == nullptr ? std::nullopt : journal->beforeFolder(path_);
  failure = failure ? failure : makeFolder(path_);
  if (failure && kindOf(path_) == PathKind::folder) {
    return std::nullopt;  // another run has made it just now, and only one of the two gets its lock
  }
  if (failure) {
    return "cannot make the folder " + typed_ + ": " + *failure;
  }
  user.printNotes("kivsys: made the folder " + printable(typed_) + "\n");
  return std::nullopt;
}

}  // namespace kiv
