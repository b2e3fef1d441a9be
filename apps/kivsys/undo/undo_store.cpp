#include "apps/kivsys/undo/undo_store.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <memory>
#include <sstream>

#include <nlohmann/json.hpp>

#include "apps/kivsys/undo/kept_files.h"
#include "base/sha256.h"
#include "platform/console/native_system.h"
#include "platform/kept_file.h"
#include "platform/locked_file.h"

namespace kiv {
namespace {

std::optional<std::string> wholeOf(const std::string& path, std::size_t limit) {
  const auto file = entryKindOf(path) == EntryKind::file ? openExactly(path) : nullptr;
  if (!file || file->size().value_or(limit + 1) > limit) {
    return std::nullopt;
  }
  std::string content(static_cast<std::size_t>(file->size().value_or(0)), '\0');
  std::size_t have = 0;
  while (have < content.size()) {
    const auto got = file->read({content.data() + have, content.size() - have});
    if (!got) {
      return std::nullopt;
    }
    if (*got == 0) {
      break;
    }
    have += *got;
  }
  content.resize(have);
  return content;
}

/// Writes a new file and waits until it is on the disk.
std::optional<std::string> writeNew(const std::string& path, const std::string& content) {
  if (auto failure = removeEntry(path)) {
    return failure;
  }
  LockedFile file;
  const bool done = file.open(path) == LockedFile::Outcome::open && file.append(content) && file.flush();
  return done ? std::nullopt : std::optional(file.failure());
}

}  // namespace

std::string wordsOf(const Journal& journal) {
  return journal.command + " of " + journal.time;
}

UndoStore::UndoStore()
    : folder_(stateFolder().empty() ? "" : pathIn(stateFolder(), "undo")),
      ends_(stateFolder().empty() ? "" : pathIn(stateFolder(), "ended-runs")) {}

std::optional<std::string> UndoStore::prepare() const {
  if (folder_.empty()) {
    return "the system names no folder for the state of programs";
  }
  const auto failure = makePrivateFolders(folder_);
  return failure ? std::optional("cannot write to " + folder_ + ": " + *failure) : std::nullopt;
}

std::string UndoStore::journalPath(const std::string& run) const {
  return pathIn(folder_, "run-" + run);
}

std::string UndoStore::namePath(const std::string& folder) const {
  return pathIn(folder_, "folder-" + sha256(pathKey(folder)));
}

std::string UndoStore::runIn(const std::string& path) const {
  constexpr std::size_t limit = 64;
  std::string run = wholeOf(path, limit).value_or("");
  return isRunId(run) && entryKindOf(journalPath(run)) == EntryKind::file ? run : "";
}

std::string UndoStore::lastRunOf(const std::string& folder) const {
  return folder_.empty() ? "" : runIn(namePath(folder));
}

std::optional<std::string> UndoStore::setLastRun(const std::string& folder, const std::string& run) const {
  const std::string path = namePath(folder);
  const std::string beside = path + "-" + run;
  auto failure = writeNew(beside, run);
  failure = failure ? failure : moveOver(beside, path);
  if (failure) {
    static_cast<void>(removeEntry(beside));
    return failure;
  }
  return flushFolderAt(folder_);
}

std::optional<Journal> UndoStore::read(const std::string& run) const {
  const auto text = folder_.empty() || !isRunId(run) ? std::nullopt : wholeOf(journalPath(run), longestJournal);
  auto journal = text ? readJournal(*text) : std::nullopt;
  return journal && journal->id == run ? std::move(journal) : std::nullopt;
}

void UndoStore::forgetPrevious(const Journal& journal) const {
  for (const JournalFolder& folder : journal.folders) {
    if (!folder.previous.empty() && folder.previous != journal.id) {
      forget(folder.previous);
    }
  }
}

std::optional<std::string> UndoStore::handBack(const Journal& journal) const {
  for (const JournalFolder& folder : journal.folders) {
    const std::string path = namePath(folder.path);
    if (runIn(path) != journal.id) {
      continue;
    }
    const bool hasPrevious = !folder.previous.empty() && entryKindOf(journalPath(folder.previous)) == EntryKind::file;
    auto failure = hasPrevious ? setLastRun(folder.path, folder.previous) : removeEntry(path);
    if (failure) {
      return failure;
    }
  }
  removeKeptFiles(journal);
  return removeEntry(journalPath(journal.id));
}

void UndoStore::forget(const std::string& run) const {
  if (entryKindOf(journalPath(run)) != EntryKind::file) {
    return;
  }
  if (const auto journal = read(run)) {
    forgetPrevious(*journal);
    removeKeptFiles(*journal);
    for (const JournalFolder& folder : journal->folders) {
      if (const std::string path = namePath(folder.path); runIn(path) == run) {
        static_cast<void>(removeEntry(path));
      }
    }
  }
  static_cast<void>(removeEntry(journalPath(run)));
}

std::vector<std::string> UndoStore::endLines() const {
  constexpr std::size_t limit = std::size_t{1024} * 1024;
  std::istringstream text(ends_.empty() ? "" : wholeOf(ends_, limit).value_or(""));
  std::vector<std::string> lines;
  for (std::string line; std::getline(text, line);) {
    lines.push_back(line);
  }
  return lines;
}

void UndoStore::noteEnd(const Journal& journal, const RunEnd& end) const {
  constexpr std::ptrdiff_t most = 200;
  std::vector<std::string> lines = endLines();
  for (const JournalFolder& folder : journal.folders) {
    lines.push_back(nlohmann::json{{"folder", sha256(pathKey(folder.path))},
                                   {"run", end.run},
                                   {"follower", end.follower},
                                   {"where", NativeSystem::toUtf8(end.where)}}
                        .dump(-1, ' ', false, nlohmann::json::error_handler_t::replace));
  }
  std::string text;
  std::for_each(lines.end() - std::min(most, std::ssize(lines)), lines.end(),
                [&](const std::string& line) { text += line + "\n"; });
  const std::string beside = ends_ + "-" + journal.id;
  if (writeNew(beside, text) || moveOver(beside, ends_)) {
    static_cast<void>(removeEntry(beside));
  }
}

std::optional<RunEnd> UndoStore::endOf(const std::string& folder) const {
  const std::string key = sha256(pathKey(folder));
  std::optional<RunEnd> last;
  for (const std::string& line : endLines()) {
    const auto object = nlohmann::json::parse(line, nullptr, false);
    const auto textOf = [&](const char* name) {
      const auto found = object.is_object() ? object.find(name) : object.end();
      return object.is_object() && found != object.end() && found->is_string() ? found->get<std::string>() : "";
    };
    if (textOf("folder") == key && !textOf("run").empty()) {
      last = RunEnd{textOf("run"), textOf("follower"), NativeSystem::fromUtf8(textOf("where"))};
    }
  }
  return last;
}

}  // namespace kiv
