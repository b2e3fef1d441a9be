#pragma once

#include <optional>
#include <string>
#include <vector>

#include "apps/kivsys/undo/journal_text.h"

namespace kiv {

/// What becomes of files that have changed since the run.
enum class ChangedFiles {
  refuse,  ///< the undo
  stay,    ///< as they are
};

/// What takes a run back. All paths are the disk's.
struct UndoPlan {
  struct Restored {
    std::string path;
    std::string kept;  ///< the old file
  };
  std::vector<std::string> refusals;  ///< why the run cannot be taken back; then nothing else counts
  bool onlyChanged = true;            ///< files that have changed are the only reasons
  std::vector<std::string> left;      ///< files that have changed and stay as they are
  std::vector<Restored> restored;     ///< files that get their old state
  std::vector<std::string> removed;   ///< files that the run made
  std::vector<std::string> folders;   ///< folders that it made and that are there, the last one first

  /// Whether there is nothing to take back.
  bool isEmpty() const { return refusals.empty() && restored.empty() && removed.empty() && folders.empty(); }
};

/// Compares the files with what the run has made of them. What an earlier undo has done already is left out.
UndoPlan planUndo(const Journal& journal, ChangedFiles changed);

/// Puts the old files back and removes what the run made, except folders that other files are in. Can be repeated when
/// it was stopped. Returns why a file or folder cannot be changed.
[[nodiscard]] std::optional<std::string> carryOut(const UndoPlan& plan, const Journal& journal);

}  // namespace kiv
