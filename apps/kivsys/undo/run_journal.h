#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "apps/kivsys/undo/previous_runs.h"
#include "apps/kivsys/undo/undo_store.h"
#include "base/numbered_texts.h"
#include "platform/console/change_journal.h"
#include "platform/console/console_system.h"
#include "platform/locked_file.h"

namespace kiv {

/// Whether a run may change files that no undo could bring back.
enum class UndoNeed {
  wanted,    ///< when its journal cannot be written, the run says so once and continues
  required,  ///< then nothing is changed
};

/// The journal of a run, written from its first change on. Each change is in the journal before it is made, and the
/// journal is on the disk before a file that was there is replaced or deleted, which has a second name then.
class RunJournal : public ChangeJournal {
 public:
  /// The command is named in the journal; the clock must outlive this object.
  RunJournal(Machine& clock, std::string command, UndoNeed need)
      : clock_(clock), command_(std::move(command)), need_(need) {}
  /// A run that has changed nothing gives its folders back to the run before it.
  ~RunJournal() override;
  RunJournal(const RunJournal&) = delete;
  RunJournal& operator=(const RunJournal&) = delete;

  std::string folderToUndo() const override;
  std::string temporaryMark() const override { return file_ ? head_.id : ""; }
  std::optional<std::string> beforeFolder(const std::string& path) override;
  std::optional<std::string> beforeReplace(const std::string& path, const std::string& target,
                                           std::string_view bytes) override;
  std::optional<std::string> beforeOpen(const std::string& path) override;
  std::optional<std::string> beforeDelete(const std::string& path) override;
  void afterWrite(const std::string& path, Sha256 written) noexcept override;

 private:
  /// How the old file of a change is kept.
  enum class Keep { secondName, copy };
  using Failure = std::optional<std::string>;

  Failure record(const std::function<Failure()>& step);
  void giveUp(const std::string& reason);
  Failure open();
  Failure addFolder(const std::string& folder);
  Failure addFolderOf(const std::string& path);
  Failure change(const std::string& path, const std::string& after, Keep keep);
  Failure firstChange(FileChange& change, Keep keep);
  Failure keepOld(const FileChange& change, Keep keep) const;
  Failure append(const std::string& line);
  Failure flush();

  Machine& clock_;
  std::string command_;
  UndoNeed need_;
  UndoStore store_;
  PreviousRuns previous_{store_, head_};
  Journal head_;
  std::optional<LockedFile> file_;
  std::set<std::string> folders_;
  std::string lastFolder_;
  NumberedTexts files_;            // the paths of those that were changed
  std::vector<bool> werePresent_;  // the same, by their numbers
  std::size_t kept_ = 0;
  bool gaveUp_ = false;
};

/// Has the changes of a run written into its journal, unless the run is like the panel's or the user wants none. Both
/// must outlive this object, and whatever ends the run, threads are done with the journal when it goes.
class JournalUse {
 public:
  JournalUse(ConsoleSystem& system, RunJournal& journal, bool isWanted);
  JournalUse(const JournalUse&) = delete;
  JournalUse& operator=(const JournalUse&) = delete;
  ~JournalUse() { system_.endJournal(); }

 private:
  ConsoleSystem& system_;
};

}  // namespace kiv
