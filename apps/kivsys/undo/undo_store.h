#pragma once

#include <optional>
#include <string>
#include <vector>

#include "apps/kivsys/undo/journal_text.h"

namespace kiv {

/// Why a run can no longer be undone.
struct RunEnd {
  std::string run;       ///< "convert of 2026-11-22 08:30:00"
  std::string follower;  ///< the run that took its place, in the same words; "" when it was undone itself
  std::string where;     ///< the folder in which it did
};

/// A run in words: "convert of 2026-11-22 08:30:00".
std::string wordsOf(const Journal& journal);

/// The journals in the state folder of the user: one for each run that can be undone, and for each folder the name of
/// the last run that wrote into it. Only the run or the undo that has locked a folder may ask or change what is known
/// of it. Folders are full paths without links.
class UndoStore {
 public:
  UndoStore();

  /// Makes the folder when it is missing. Returns why there is none.
  [[nodiscard]] std::optional<std::string> prepare() const;
  /// The path of a run's journal.
  std::string journalPath(const std::string& run) const;
  /// The last run of a folder; "" when there is none that has a journal.
  std::string lastRunOf(const std::string& folder) const;
  /// Makes the run the last one of the folder, and waits until that is on the disk. Returns the failure's text.
  [[nodiscard]] std::optional<std::string> setLastRun(const std::string& folder, const std::string& run) const;
  /// Nullopt when there is no such journal, or it cannot be read.
  std::optional<Journal> read(const std::string& run) const;
  /// Removes what the runs before this one have kept, if the run was stopped before it had done so.
  void forgetPrevious(const Journal& journal) const;
  /// Removes what a run has kept, then all that is known of it. Its journal goes last, so that this can be repeated.
  void forget(const std::string& run) const;
  /// Gives the folders of a run that has changed nothing back to the runs before it, and forgets it. Returns the
  /// failure's text; then this can be repeated.
  [[nodiscard]] std::optional<std::string> handBack(const Journal& journal) const;

  /// Remembers why the run can no longer be undone, for its folders; of very many, only the last ones are known. A
  /// failure is ignored: an undo can say less then.
  void noteEnd(const Journal& journal, const RunEnd& end) const;
  /// Why the last known run of the folder can no longer be undone; nullopt when none is known.
  std::optional<RunEnd> endOf(const std::string& folder) const;

 private:
  std::vector<std::string> endLines() const;
  std::string namePath(const std::string& folder) const;
  std::string runIn(const std::string& path) const;

  std::string folder_;  // "" for none
  std::string ends_;    // the file of the ends of runs
};

}  // namespace kiv
