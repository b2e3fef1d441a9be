#include "apps/kivsys/undo/run_journal.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <exception>
#include <random>

#include "apps/kivsys/undo/kept_files.h"
#include "base/sha256.h"
#include "platform/console/error_line.h"
#include "platform/kept_file.h"

namespace kiv {
namespace {

/// A name that no other run has.
std::string newRunId(const std::string& folder) {
  constexpr std::size_t digits = 16;
  std::random_device random;
  const auto now = std::chrono::system_clock::now().time_since_epoch().count();
  return sha256(folder + std::to_string(now) + "-" + std::to_string(random()) + "-" + std::to_string(random()))
      .substr(0, digits);
}

std::string textOf(const LocalTime& time) {
  std::array<char, 64> text{};
  static_cast<void>(std::snprintf(text.data(), text.size(), "%04d-%02d-%02d %02d:%02d:%02d", time.year, time.month,
                                  time.day, time.hour, time.minute, time.second));
  return text.data();
}

}  // namespace

RunJournal::~RunJournal() {
  try {
    previous_.settle();
    if (file_ && previous_.areLeft()) {
      file_.reset();
      if (const auto journal = store_.read(head_.id)) {
        static_cast<void>(store_.handBack(*journal));  // else an undo passes over this run
      }
    }
  } catch (const std::exception&) {
    // An undo passes over this run.
  }
}

std::string RunJournal::folderToUndo() const {
  return file_ && previous_.hasChanged() ? lastFolder_ : "";
}

RunJournal::Failure RunJournal::record(const std::function<Failure()>& step) {
  previous_.settle();
  auto failure = gaveUp_ ? std::nullopt : step();
  if (failure && need_ == UndoNeed::wanted) {
    giveUp(*failure);
    return std::nullopt;
  }
  return failure ? std::optional("it could not be undone: " + *failure) : std::nullopt;
}

/// Half a journal would undo half a run.
void RunJournal::giveUp(const std::string& reason) {
  gaveUp_ = true;
  previous_.release();
  printError("this run cannot be undone: " + reason);
  if (file_) {
    file_.reset();
    store_.forget(head_.id);
  }
}

RunJournal::Failure RunJournal::append(const std::string& line) {
  const std::uint64_t size = file_->size();
  if (file_->append(line)) {
    return std::nullopt;
  }
  auto failure = file_->failure();
  static_cast<void>(file_->replaceEnd(size, ""));
  return store_.journalPath(head_.id) + ": " + failure;
}

RunJournal::Failure RunJournal::flush() {
  return file_->flush() ? std::nullopt : std::optional(store_.journalPath(head_.id) + ": " + file_->failure());
}

RunJournal::Failure RunJournal::open() {
  if (file_) {
    return std::nullopt;
  }
  if (auto failure = store_.prepare()) {
    return failure;
  }
  head_ = {newRunId(command_), command_, textOf(clock_.now()), {}, {}, {}};
  const std::string path = store_.journalPath(head_.id);
  if (file_.emplace().open(path) != LockedFile::Outcome::open) {
    const std::string failure = file_->failure();
    file_.reset();
    return "cannot write to " + path + ": " + failure;
  }
  return append(journalHead(head_));
}

/// From now on the run is the last one of the folder. What the one before has kept there goes with the first change.
RunJournal::Failure RunJournal::addFolder(const std::string& folder) {
  if (folders_.contains(folder)) {
    return std::nullopt;
  }
  if (auto failure = open()) {
    return failure;
  }
  const std::string previous = store_.lastRunOf(folder);
  auto failure = append(folderLine({folder, previous}));
  failure = failure ? failure : flush();
  failure = failure ? failure : store_.setLastRun(folder, head_.id);
  if (!failure) {
    folders_.insert(folder);
    lastFolder_ = folder;
    previous_.add(previous, folder);
  }
  return failure;
}

/// A folder that does not exist has nothing that could be changed.
RunJournal::Failure RunJournal::addFolderOf(const std::string& path) {
  const std::string real = realPath(path);
  return real.empty() ? std::nullopt : addFolder(folderAbove(real));
}

/// Gives the old file a second name, or copies it.
RunJournal::Failure RunJournal::keepOld(const FileChange& change, Keep keep) const {
  const std::string folder = keptFolderOf(folderAbove(change.path));
  const std::string kept = keptPathOf(change);
  auto failure = makeHiddenFolder(folder);
  const bool isFile = entryKindOf(change.path) == EntryKind::file;
  failure = failure                        ? failure
            : isFile && keep == Keep::copy ? keepCopy(change.path, kept)
                                           : keepFile(change.path, kept);
  failure = failure ? failure : flushFolderAt(folder);
  if (failure) {
    static_cast<void>(removeEntry(kept));
    removeEmptyFolder(folder);
    return "cannot keep " + change.path + " in " + folder + ": " + *failure;
  }
  return std::nullopt;
}

/// The line comes first: so there is no kept file that the journal does not know, unless the journal is damaged.
RunJournal::Failure RunJournal::firstChange(FileChange& change, Keep keep) {
  if (change.before == file_state::missing) {
    return append(firstChangeLine(change));
  }
  if (change.before == file_state::other) {
    return change.path + " cannot be read";
  }
  change.kept = keptName(head_.id, ++kept_);
  const std::uint64_t size = file_->size();
  if (auto failure = append(firstChangeLine(change))) {
    return failure;
  }
  if (auto failure = keepOld(change, keep)) {
    static_cast<void>(file_->replaceEnd(size, ""));
    return failure;
  }
  return flush();
}

RunJournal::Failure RunJournal::change(const std::string& path, const std::string& after, Keep keep) {
  const std::string real = realPath(path);
  const bool isFolder = entryKindOf(real) == EntryKind::other && !realFolder(real).empty();
  if (real.empty() || isFolder) {
    return std::nullopt;  // the change will fail
  }
  if (auto failure = addFolder(folderAbove(real))) {
    return failure;
  }
  if (const auto known = files_.find(real)) {
    auto failure = append(laterChangeLine(real, after));
    return failure || !werePresent_[*known] ? failure : flush();
  }
  FileChange change{real, stateOf(real), "", {after}};
  auto failure = firstChange(change, keep);
  if (!failure) {
    files_.add(real);
    werePresent_.push_back(change.before != file_state::missing);
    previous_.expect(change);
  }
  return failure;
}

std::optional<std::string> RunJournal::beforeFolder(const std::string& path) {
  return record([&]() -> Failure {
    const std::string real = realPath(path);
    auto failure = real.empty() ? std::nullopt : addFolder(real);
    failure = failure || real.empty() ? failure : append(madeFolderLine(real));
    if (!failure) {
      previous_.expectFolder(real);
    }
    return failure;
  });
}

std::optional<std::string> RunJournal::beforeReplace(const std::string& path, const std::string& target,
                                                     std::string_view bytes) {
  return record([&]() -> Failure {
    auto failure = addFolderOf(path);
    return failure ? failure : change(target, sha256(bytes), Keep::secondName);
  });
}

std::optional<std::string> RunJournal::beforeOpen(const std::string& path) {
  return record([&] { return change(path, file_state::anything, Keep::copy); });
}

std::optional<std::string> RunJournal::beforeDelete(const std::string& path) {
  return record([&]() -> Failure {
    return entryKindOf(path) == EntryKind::missing ? std::nullopt : change(path, file_state::missing, Keep::secondName);
  });
}

void RunJournal::afterWrite(const std::string& path, Sha256 written) noexcept {
  try {
    if (const std::string real = realPath(path); file_ && files_.find(real)) {
      static_cast<void>(record([&] { return append(writtenLine(real, written.hexDigest())); }));
      previous_.noteChange();
    }
  } catch (const std::exception&) {
    // Without the line, an undo does not ask what the file is.
  }
}

JournalUse::JournalUse(ConsoleSystem& system, RunJournal& journal, bool isWanted) : system_(system) {
  if (isWanted && system.isGuarded()) {
    system.setJournal(journal);
  }
}

}  // namespace kiv
