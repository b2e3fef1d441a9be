#pragma once

#include <optional>
#include <string>
#include <vector>

#include "apps/kivsys/undo/journal_text.h"

namespace kiv {

/// What becomes of files that have changed since the run, or whose old files have.
enum class ChangedFiles {
  refuse,  ///< the undo
  stay,    ///< as they are, with what the run had replaced beside them
};

/// What takes a run back. All paths are the disk's.
struct UndoPlan {
  struct Restored {
    std::string path;
    std::string kept;  ///< the old file
  };
  /// A file that stays as it is.
  struct Left {
    std::string path;
    std::string kept;     ///< the file that the run had replaced; "" for none
    std::string oldName;  ///< the name beside the file that the replaced one gets; "" for none
  };
  std::vector<std::string> refusals;  ///< why the run cannot be taken back; then nothing else counts
  bool onlyChanged = true;            ///< files that have changed are the only reasons
  std::vector<Left> left;             ///< files that have changed
  std::vector<Restored> restored;     ///< files that get their old state
  std::vector<std::string> removed;   ///< files that the run made
  std::vector<std::string> folders;   ///< folders that it made and that are there, the last one first

  /// Whether there is nothing to take back.
  bool isEmpty() const { return refusals.empty() && restored.empty() && removed.empty() && folders.empty(); }
};

/// Compares the files with what the run has made of them. What an earlier undo has done already is left out. A file
/// that is missing now is restored if changed ones stay.
UndoPlan planUndo(const Journal& journal, ChangedFiles changed);

/// Puts the old files back, or beside files that stay, and removes what the run made, except folders that other files
/// are in. Can be repeated when it was stopped. Returns why a file or folder cannot be changed.
[[nodiscard]] std::optional<std::string> carryOut(const UndoPlan& plan, const Journal& journal);

}  // namespace kiv
