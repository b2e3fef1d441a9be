// How a run of the console program replaces files: at once, or by a thread of its own while the run goes ahead.

#include <utility>

#include "platform/console/console_system.h"
#include "platform/console/stop_signals.h"

namespace kiv {

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
    writer_ = std::make_unique<Worker>();
  }
}

std::optional<WriteFailure> ConsoleSystem::replaceSoon(const std::string& name, std::string_view bytes) {
  if (writer_ == nullptr) {
    return GuardedSystem::replaceSoon(name, bytes);
  }
  if (auto failure = finishReplacing()) {
    return failure;
  }
  const std::string file = inBoundFolder(name);
  pending_.path = NativeSystem::diskName(file);
  pending_.name = name;
  pending_.file = file;
  if (!mayWrite(pending_.path)) {
    return WriteFailure{name, refusedFile};
  }
  endIfStopped();
  if (auto failure = findDestination(file, pending_.destination)) {
    noteWriteFailure(pending_.path, *failure);
    return WriteFailure{name, *failure};
  }
  pending_.bytes.assign(bytes);
  writer_->begin([this] { return writePending(); });
  return std::nullopt;
}

/// The thread's part. While it lasts, the run touches neither the journal nor what is pending.
std::optional<std::string> ConsoleSystem::writePending() {
  if (journal_ != nullptr) {
    if (auto failure = journal_->beforeReplace(pending_.path, pending_.destination.path, pending_.bytes)) {
      return failure;
    }
    pending_.destination.mark = journal_->temporaryMark();
  }
  PreparedFile file;
  auto failure = file.prepare(pending_.destination, pending_.bytes);
  return failure ? failure : file.place();
}

/// Waits for the file that is being written, and enters what has become of it.
void ConsoleSystem::settle() {
  if (writer_ == nullptr || !writer_->isBusy()) {
    return;
  }
  const auto failure = writer_->wait();
  const NativeSystem::Destination destination = std::exchange(pending_.destination, {});
  if (failure) {
    noteWriteFailure(pending_.path, *failure);
    failed_ = WriteFailure{pending_.name, *failure};
    return;
  }
  noteReplaced(destination);
  GuardedSystem::addReplaced(pending_.file);
  addReplaced(pending_.name, pending_.path);
}

std::optional<WriteFailure> ConsoleSystem::finishReplacing() {
  settle();
  return std::exchange(failed_, std::nullopt);
}

}  // namespace kiv
