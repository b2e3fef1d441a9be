// How a run of the console program replaces files: at once, or by threads while the run goes ahead.

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>

#include "base/number.h"
#include "platform/console/console_system.h"
#include "platform/console/error_line.h"
#include "platform/console/stop_signals.h"
#include "platform/kept_file.h"
#include "platform/native_file.h"

namespace kiv {
namespace {

bool isSeparator(char c) {
  return c == '/' || c == '\\';
}

/// Whether the paths are those of two files of one folder whose names differ in digits and in nothing else: then they
/// are two on every disk.
bool differInDigits(std::string_view a, std::string_view b) {
  const auto [inA, inB] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
  return inA != a.end() && std::equal(inA, a.end(), inB, b.end(), [](char x, char y) {
           return (x == y && !isSeparator(x)) || (isDigit(x) && isDigit(y));
         });
}

}  // namespace

std::optional<std::string> ConsoleSystem::replaceFile(const std::string& name, std::string_view bytes) {
  return putFile(name, bytes, Existing::replaced);
}

std::optional<std::string> ConsoleSystem::createFile(const std::string& name, std::string_view bytes) {
  return putFile(name, bytes, Existing::kept);
}

std::optional<std::string> ConsoleSystem::putFile(const std::string& name, std::string_view bytes, Existing existing) {
  settle();
  const std::string file = inBoundFolder(name);
  const std::string path = NativeSystem::diskName(file);
  if (isGuarded() && !mayWrite(path)) {
    return refusedFile;
  }
  if (journal_ != nullptr) {
    if (auto failure = journal_->beforeReplace(path, replacedPath(file), bytes)) {
      noteWriteFailure(path, *failure);
      return failure;
    }
    markTemporaryFiles(journal_->temporaryMark());
  }
  auto failure =
      existing == Existing::replaced ? GuardedSystem::replaceFile(file, bytes) : GuardedSystem::createFile(file, bytes);
  if (failure) {
    noteWriteFailure(path, *failure);
  } else {
    addReplaced(name, path);
  }
  return failure;
}

void ConsoleSystem::addReplaced(const std::string& name, const std::string& path) {
  guard_.addWritten(path);
  writtenFiles_.add(name, path);
}

std::optional<std::string> ConsoleSystem::replacePage(const std::string& name, std::string_view bytes) {
  settle();
  const auto page = pages_.find(name);
  if (!page || journal_ == nullptr) {
    return "it is no page of a run that can be undone";
  }
  const std::string path(*page);
  if (!stamps_.isSame(path)) {
    return "another program has changed it";
  }
  const std::string file = coreName(path);
  if (auto failure = journal_->beforeReplace(path, replacedPath(file), bytes)) {
    return failure;
  }
  markTemporaryFiles(journal_->temporaryMark());
  auto failure = GuardedSystem::replaceFile(file, bytes);
  if (!failure) {
    stamps_.forget(path);
    writtenFiles_.add(name, path);
  }
  return failure;
}

void ConsoleSystem::writeInBackground() {
  if (isGuarded()) {
    queue_ = std::make_unique<ReplaceQueue>();
  }
}

void ConsoleSystem::endJournal() noexcept {
  queue_.reset();
  filesUnderWay_.clear();
  journal_ = nullptr;
}

/// Whether a file to be read or written is none of those under way, nor will be: its name differs in digits from
/// theirs, as the names of results do, and it is no link.
bool ConsoleSystem::isApart(const std::string& path) {
  const EntryKind kind = entryKindOf(path);
  return (kind == EntryKind::missing || kind == EntryKind::file) &&
         std::all_of(filesUnderWay_.begin(), filesUnderWay_.end(),
                     [&](const auto& file) { return differInDigits(path, file->destination().path); });
}

/// Whether a file may be under way beside those that are.
bool ConsoleSystem::mayFollow(const std::string& path) {
  // A journal that a full disk ends would not be missed without the temporary files of later results.
  constexpr std::uint64_t enoughSpace = std::uint64_t{64} * 1024 * 1024;
  const std::string folder = folderOfPath(*this, path);
  return isApart(path) && !areSignalsWaiting() && freeBytes(folder.empty() ? "." : folder).value_or(0) >= enoughSpace;
}

std::optional<WriteFailure> ConsoleSystem::replaceSoon(const std::string& name, const SharedBytes& bytes) {
  if (queue_ == nullptr) {
    return GuardedSystem::replaceSoon(name, bytes);
  }
  while (!queue_->isEmpty() && (queue_->isFull() || queue_->isFirstDone())) {
    settleFirst();
  }
  const std::string file = inBoundFolder(name);
  std::string path = NativeSystem::diskName(file);
  auto refusal = guard_.refusal(path);
  if (!queue_->isEmpty() && (refusal || !mayFollow(path))) {
    settle();
    path = NativeSystem::diskName(file);
    refusal = guard_.refusal(path);
  }
  if (failed_) {
    return std::exchange(failed_, std::nullopt);
  }
  if (refusal) {
    printError(*refusal);
    return WriteFailure{name, refusedFile};
  }
  return handOver({name, file, std::move(path)}, bytes);
}

std::optional<WriteFailure> ConsoleSystem::handOver(JournaledFile::Names names, const SharedBytes& bytes) {
  endIfStopped();
  Destination destination;
  if (auto failure = findDestination(names.path, destination)) {
    noteWriteFailure(names.path, *failure);
    return WriteFailure{names.name, *failure};
  }
  auto next = std::make_unique<JournaledFile>(std::move(names), std::move(destination), bytes, journal_);
  if (!filesUnderWay_.empty()) {
    filesUnderWay_.back()->shareMarkWith(*next);
  }
  filesUnderWay_.push_back(std::move(next));
  try {
    queue_->add(*filesUnderWay_.back());
  } catch (...) {
    filesUnderWay_.pop_back();
    throw;
  }
  return std::nullopt;
}

/// Waits for the first file under way, and enters what has become of it. If it has failed, none is under way then.
void ConsoleSystem::settleFirst() {
  std::optional<std::string> failure;
  try {
    failure = queue_->waitForFirst();
  } catch (...) {
    filesUnderWay_.clear();
    throw;
  }
  const auto file = std::move(filesUnderWay_.front());
  filesUnderWay_.pop_front();
  const auto& [name, coreFile, path] = file->names();
  if (failure) {
    filesUnderWay_.clear();
    noteWriteFailure(path, *failure);
    failed_ = WriteFailure{name, *failure};
    return;
  }
  noteReplaced(file->destination());
  GuardedSystem::addReplaced(coreFile);
  addReplaced(name, path);
}

void ConsoleSystem::settle() {
  while (!filesUnderWay_.empty()) {
    settleFirst();
  }
}

std::optional<WriteFailure> ConsoleSystem::finishReplacing() {
  settle();
  return std::exchange(failed_, std::nullopt);
}

}  // namespace kiv
