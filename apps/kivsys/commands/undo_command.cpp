#include "apps/kivsys/commands/undo_command.h"

#include <algorithm>
#include <optional>

#include <nlohmann/json.hpp>

#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/output/outcome_json.h"
#include "apps/kivsys/selection/selection.h"
#include "apps/kivsys/undo/kept_files.h"
#include "apps/kivsys/undo/undo_plan.h"
#include "apps/kivsys/undo/undo_store.h"
#include "platform/console/error_line.h"
#include "platform/console/folder_locks.h"
#include "platform/console/printable.h"
#include "platform/console/shell_words.h"
#include "platform/console/stop_signals.h"
#include "platform/kept_file.h"

namespace kiv {
namespace {

std::string planText(const UndoPlan& plan, const Journal& journal, bool dryRun) {
  const std::string would = dryRun ? "would be " : "";
  std::string text;
  for (const UndoPlan::Restored& file : plan.restored) {
    text += printable(file.path) + ": " + would + "restored\n";
  }
  for (const std::string& path : plan.removed) {
    text += printable(path) + ": " + would + "removed\n";
  }
  for (const UndoPlan::Left& file : plan.left) {
    text += printable(file.path) + ": has changed since, " + (dryRun ? "would stay as it is" : "left as it is");
    const std::string old = std::string("; what the run had replaced ") + (dryRun ? "would be " : "is ");
    text += file.oldName.empty() ? "\n" : old + printable(file.oldName) + "\n";
  }
  for (const std::string& folder : plan.folders) {
    if (dryRun || realFolder(folder).empty()) {
      text += printable(folder) + ": " + (dryRun ? "would be removed if it is empty\n" : "removed\n");
    }
  }
  return text + printable(wordsOf(journal)) + ": " + would + "undone\n";
}

Json pathJson(const std::string& path) {
  return NativeSystem::toUtf8(path);
}

std::string planJson(const UndoPlan& plan, const Journal& journal, bool dryRun) {
  Json object = {{"end", "normal"}, {"dry_run", dryRun}, {"command", journal.command}, {"time", journal.time}};
  object["folders"] = Json::array();
  for (const JournalFolder& folder : journal.folders) {
    object["folders"].push_back(pathJson(folder.path));
  }
  object["restored"] = Json::array();
  for (const UndoPlan::Restored& file : plan.restored) {
    object["restored"].push_back(pathJson(file.path));
  }
  object["removed"] = Json::array();
  for (const std::string& path : plan.removed) {
    object["removed"].push_back(pathJson(path));
  }
  object["left"] = Json::array();
  object["set_aside"] = Json::array();
  for (const UndoPlan::Left& file : plan.left) {
    object["left"].push_back(pathJson(file.path));
    if (!file.oldName.empty()) {
      object["set_aside"].push_back(pathJson(file.oldName));
    }
  }
  object["removed_folders"] = Json::array();
  for (const std::string& folder : plan.folders) {
    if (dryRun || realFolder(folder).empty()) {
      object["removed_folders"].push_back(pathJson(folder));
    }
  }
  object["schema_version"] = schemaVersion;
  return asLine(object);
}

std::vector<std::string> foldersOf(const Journal& journal) {
  std::vector<std::string> folders;
  for (const JournalFolder& folder : journal.folders) {
    folders.push_back(folder.path);
  }
  return folders;
}

/// The plan of the last run of a folder, as long as its folders are locked.
class Undo {
 public:
  explicit Undo(const UndoOptions& options) : options_(options) {}
  int run();

 private:
  int prepare();
  int undo(const Journal& journal);
  int refuseUndo(const UndoPlan& plan) const;
  int passOver(const Journal& journal);
  int refuseNoRun() const;
  std::string typed() const { return options_.folder.empty() ? "." : options_.folder; }
  std::optional<Journal> read() const;
  int refuseDamaged() const;

  const UndoOptions& options_;
  UndoStore store_;
  std::string folder_;
  std::string run_;
  std::string before_;  // the run to take instead of the last one; "" for that one
  FolderLocks locks_;
};

/// The journal of the run, which wrote into the folder even when the line that says so was cut off.
std::optional<Journal> Undo::read() const {
  auto journal = store_.read(run_);
  if (journal && std::none_of(journal->folders.begin(), journal->folders.end(),
                              [&](const JournalFolder& folder) { return folder.path == folder_; })) {
    journal->folders.push_back({folder_, ""});
  }
  return journal;
}

int Undo::refuseDamaged() const {
  std::vector<std::string> reasons = {"the journal " + store_.journalPath(run_) +
                                      " cannot be read, or is damaged; nothing is undone"};
  if (const std::string kept = keptFolderOf(folder_); !realFolder(kept).empty()) {
    reasons.push_back("files that runs have replaced here are in " + kept);
  }
  return refuse(reasons);
}

/// Says why there is no run that can be undone.
int Undo::refuseNoRun() const {
  std::string reason = "no run that wrote into it is known, or it was made with --no-undo or --like-panel";
  if (realFolder(typed()).empty()) {
    reason = "there is no such folder";
  } else if (const auto end = store_.endOf(folder_)) {
    reason = end->follower.empty()
                 ? "its last run, the " + end->run + ", is undone"
                 : "the " + end->run + " was followed by the " + end->follower + " in the folder " + end->where;
    reason += "; only the last run of a folder can be undone";
  }
  return refuse({"no run in the folder " + typed() + " can be undone: " + reason});
}

/// Finds the run, and locks its folders. Returns the exit status of an undo that ends here.
int Undo::prepare() {
  const std::string real = realFolder(typed());
  folder_ = real.empty() ? realPath(typed()) : real;
  const std::string last = folder_.empty() ? "" : store_.lastRunOf(folder_);
  run_ = before_.empty() ? last : before_;
  if (run_.empty()) {
    return refuseNoRun();
  }
  const auto journal = read();
  if (!journal) {
    return refuseDamaged();
  }
  if (!locks_.take(foldersOf(*journal), false)) {
    return exit_status::busy;
  }
  if (store_.lastRunOf(folder_) != last) {
    printError("another run has written into the folder " + typed());
    return exit_status::busy;
  }
  return exit_status::normal;
}

/// Says why nothing is undone, and how to undo the rest.
int Undo::refuseUndo(const UndoPlan& plan) const {
  std::vector<std::string> reasons = plan.refusals;
  reasons.emplace_back("nothing is undone");
  const int status = refuse(reasons);
  if (plan.onlyChanged && !options_.quiet) {
    NativeSystem::writeError("Next: kivsys undo --keep-changed" +
                             (options_.folder.empty() ? "" : " " + printable(fileWord(options_.folder))) + "\n");
  }
  return status;
}

int Undo::undo(const Journal& journal) {
  const UndoPlan plan = planUndo(journal, options_.keepChanged ? ChangedFiles::stay : ChangedFiles::refuse);
  if (!plan.refusals.empty()) {
    return refuseUndo(plan);
  }
  if (!options_.dryRun) {
    store_.forgetPrevious(journal);
    if (const auto failure = carryOut(plan, journal)) {
      printError(*failure);
      printError("not all is undone; run undo again");
      return exit_status::critical;
    }
  }
  const std::string text =
      options_.json ? planJson(plan, journal, options_.dryRun) : planText(plan, journal, options_.dryRun);
  if (!options_.dryRun) {
    store_.forget(run_);
    store_.noteEnd(journal, {wordsOf(journal), "", ""});
  }
  return printOutcome(text, exit_status::normal);
}

/// Passes over a run that was stopped before it changed anything. Returns the exit status of an undo that ends here.
int Undo::passOver(const Journal& journal) {
  const auto here = std::find_if(journal.folders.begin(), journal.folders.end(),
                                 [&](const JournalFolder& folder) { return folder.path == folder_; });
  before_ = here == journal.folders.end() ? "" : here->previous;
  if (options_.dryRun) {
    return before_.empty() ? refuseNoRun() : exit_status::normal;
  }
  before_.clear();  // the store has it then
  if (const auto failure = store_.handBack(journal)) {
    printError("cannot change the journals of the folder " + folder_ + ": " + *failure);
    return exit_status::critical;
  }
  return exit_status::normal;
}

int Undo::run() {
  while (true) {
    if (const int status = prepare(); status != exit_status::normal) {
      return status;
    }
    const auto journal = read();  // as it is under the locks
    if (!journal) {
      return refuseDamaged();
    }
    const bool hasPrevious = std::any_of(journal->folders.begin(), journal->folders.end(),
                                         [&](const auto& folder) { return store_.read(folder.previous).has_value(); });
    if (!hasPrevious || !planUndo(*journal, ChangedFiles::refuse).isEmpty()) {
      return undo(*journal);
    }
    if (const int status = passOver(*journal); status != exit_status::normal) {
      return status;
    }
    locks_ = FolderLocks();
  }
}

}  // namespace

int runUndo(const UndoOptions& options) {
  noteStopSignals(SecondSignal::isNoted);  // half an undo helps nobody
  return Undo(options).run();
}

}  // namespace kiv
