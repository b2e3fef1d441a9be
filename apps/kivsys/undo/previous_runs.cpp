#include "apps/kivsys/undo/previous_runs.h"

#include <algorithm>

#include "apps/kivsys/undo/kept_files.h"
#include "platform/kept_file.h"
#include "platform/native_file.h"

namespace kiv {
namespace {

/// Whether the kept file is a second name of the file, which is so until the file is replaced.
bool isSecondName(const FileChange& change) {
  const auto identity = change.kept.empty() ? std::nullopt : identityOf(keptPathOf(change));
  return identity && identity == identityOf(change.path);
}

}  // namespace

/// A failure to remember why must not keep the run from being forgotten.
void PreviousRuns::forget(const std::string& run, const std::string& folder) const {
  if (const auto journal = store_.read(run)) {
    store_.noteEnd(*journal, {wordsOf(*journal), wordsOf(head_), folder});
  }
  store_.forget(run);
}

void PreviousRuns::add(const std::string& run, const std::string& folder) {
  if (run.empty()) {
    return;
  }
  if (hasChanged_ || isAnyMade()) {
    forget(run, folder);
    noteChange();
  } else {
    runs_.emplace(run, folder);
  }
}

void PreviousRuns::expect(const FileChange& change) {
  if (!hasChanged_) {
    changes_.push_back({change, isSecondName(change)});
  }
}

void PreviousRuns::expectFolder(const std::string& path) {
  if (!hasChanged_) {
    folders_.push_back(path);
  }
}

void PreviousRuns::noteChange() {
  hasChanged_ = true;
  for (const auto& [run, folder] : runs_) {
    forget(run, folder);
  }
  runs_.clear();
  changes_.clear();
  folders_.clear();
}

bool PreviousRuns::isMade(const Expected& expected) {
  return (expected.isLinked && !isSecondName(expected.change)) ||
         stateOf(expected.change.path) != expected.change.before;
}

bool PreviousRuns::isAnyMade() const {
  return std::any_of(changes_.begin(), changes_.end(), isMade) ||
         std::any_of(folders_.begin(), folders_.end(),
                     [](const std::string& folder) { return !realFolder(folder).empty(); });
}

void PreviousRuns::settle() {
  if (areLeft() && isAnyMade()) {
    noteChange();
  }
}

}  // namespace kiv
