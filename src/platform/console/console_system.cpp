#include "platform/console/console_system.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

#include "messages/run_time_errors.h"
#include "platform/console/error_line.h"
#include "platform/console/stop_signals.h"
#include "platform/kept_file.h"
#include "platform/memory/memory_input.h"
#include "platform/separators.h"

namespace kiv {
namespace {

std::string folderOf(Machine& machine, const std::string& name) {
  return name.substr(0, lastBackslash(machine, name) + 1);
}

/// A file that notifies the journal of what was written.
class JournaledOutput : public OutputFile {
 public:
  JournaledOutput(std::unique_ptr<OutputFile> file, ChangeJournal& journal, std::string path)
      : file_(std::move(file)), journal_(journal), path_(std::move(path)) {}
  JournaledOutput(const JournaledOutput&) = delete;
  JournaledOutput& operator=(const JournaledOutput&) = delete;
  ~JournaledOutput() override {
    if (isComplete_) {
      journal_.afterWrite(path_, written_);
    }
  }

  std::optional<std::string> write(std::string_view bytes) override {
    auto failure = file_->write(bytes);
    written_.update(bytes);
    isComplete_ = isComplete_ && !failure;
    return failure;
  }

 private:
  std::unique_ptr<OutputFile> file_;
  ChangeJournal& journal_;
  std::string path_;
  Sha256 written_;
  bool isComplete_ = true;
};

}  // namespace

std::string folderOfPath(Machine& machine, const std::string& path) {
  // No character of two bytes ends in a slash.
  const std::size_t slash = path.rfind('/') + 1;
  return path.substr(0, std::max(lastBackslash(machine, path) + 1, slash));
}

void ConsoleSystem::serveNamesFile(const std::string& name, std::string text) {
  namesFile_ = name;
  names_ = std::make_shared<const std::string>(std::move(text));
}

void ConsoleSystem::protectFile(const FoundFile& file) {
  guard_.addInput(file.path, file.stamp ? std::optional(file.stamp->identity) : std::nullopt);
}

void ConsoleSystem::bindPages(const std::vector<FoundFile>& pages) {
  for (const FoundFile& page : pages) {
    pages_.add(upperCase(page.name), page.path);
    protectFile(page);
  }
}

void ConsoleSystem::countAsOpened(const std::vector<FoundFile>& pages) {
  areOpened_ = std::all_of(pages.begin(), pages.end(), [this](const FoundFile& page) {
    return page.stamp && stamps_.isSame(page.path, page.stamp);
  });
}

void ConsoleSystem::bindFolder() {
  if (!pages_.isEmpty()) {
    boundFolder_ = folderOf(*this, std::string(pages_.name(0)));
    pageFolder_ = folderOf(*this, coreName(std::string(pages_.path(0))));
  }
}

std::string ConsoleSystem::inBoundFolder(const std::string& name) {
  const std::string folder = folderOf(*this, name);
  return !folder.empty() && folder == boundFolder_ ? pageFolder_ + name.substr(folder.size()) : name;
}

std::string ConsoleSystem::bound(const std::string& name) {
  const auto path = pages_.find(name);
  return path ? coreName(std::string(*path)) : inBoundFolder(name);
}

std::unique_ptr<InputFile> ConsoleSystem::openInput(const std::string& name) {
  if (names_ && name == namesFile_) {
    return std::make_unique<MemoryInput>(names_);
  }
  const auto path = pages_.find(name);
  if (!path) {
    const std::string file = inBoundFolder(name);
    if (!filesUnderWay_.empty() && !isApart(NativeSystem::diskName(file))) {
      settle();
    }
    return GuardedSystem::openInput(file);
  }
  auto file = openPage(name, std::string(*path));
  const auto corrected = corrections_.pages.find(name);
  return file && corrected != corrections_.pages.end() ? openCorrected(std::move(file), corrected->second, name)
                                                       : std::move(file);
}

bool ConsoleSystem::willOpen(const std::string& name, Fetch fetch) {
  endIfStopped();
  return (areOpened_ && pages_.find(name)) || GuardedSystem::willOpen(name, fetch);
}

/// Opens a page before it is compared with what it was: then it is this very file that has not changed.
std::unique_ptr<InputFile> ConsoleSystem::openPage(const std::string& name, const std::string& path) {
  endIfStopped();
  areOpened_ = false;
  auto file = pagesAhead_ ? pagesAhead_->take(path) : nullptr;
  if (!file) {
    file = openExactly(path);
  }
  const auto stamp = file ? file->stamp() : std::nullopt;
  if (!(stamp ? stamps_.isSame(path, stamp) : stamps_.isSame(path))) {
    endProgram(messages::fileChanged(name));
  }
  return file;
}

void ConsoleSystem::expectReading(const std::vector<std::string>& names, FileOutliner* outliner) {
  constexpr std::size_t fewPages = 16;  // for fewer, a thread costs more than it saves
  constexpr std::size_t largestPage = std::size_t{256} * 1024;
  pagesAhead_.reset();
  if (!readsAhead_ || names.size() < fewPages) {
    return;
  }
  std::vector<std::string_view> paths;
  paths.reserve(names.size());
  for (const std::string& name : names) {
    const auto path = pages_.find(name);
    if (!path) {
      return;
    }
    paths.push_back(*path);
  }
  pagesAhead_ = std::make_unique<ReadAhead>(std::move(paths), largestPage, outliner);
}

/// Whether a file may be written here; a line on standard error when not.
bool ConsoleSystem::mayWrite(const std::string& path) {
  const auto refusal = guard_.refusal(path);
  if (refusal) {
    printError(*refusal);
  }
  return !refusal;
}

void ConsoleSystem::noteWriteFailure(const std::string& path, const std::string& reason) {
  std::string folder = folderOfPath(*this, path);
  folder = folder.empty() ? diskName(currentFolder()) : folder;
  while (folder.size() > 1 && (folder.ends_with('/') || folder.ends_with('\\'))) {
    folder.pop_back();
  }
  writeFailure_ = reason.empty() ? "" : folder + ": " + reason;
}

std::unique_ptr<OutputFile> ConsoleSystem::openOutput(const std::string& name) {
  settle();
  const std::string path = NativeSystem::diskName(name);
  if (isGuarded() && !mayWrite(path)) {
    return nullptr;
  }
  if (journal_ != nullptr && journal_->beforeOpen(path)) {
    return nullptr;
  }
  auto file = GuardedSystem::openOutput(name);
  if (file) {
    guard_.addWritten(path);
  } else {
    noteWriteFailure(path, lastCallFailure());
  }
  return journaled(std::move(file), path);
}

std::unique_ptr<OutputFile> ConsoleSystem::journaled(std::unique_ptr<OutputFile> file, const std::string& path) {
  if (file && journal_ != nullptr) {
    file = std::make_unique<JournaledOutput>(std::move(file), *journal_, path);
  }
  return file;
}

bool ConsoleSystem::deleteFile(const std::string& name) {
  settle();
  if (names_ && name == namesFile_) {
    return true;
  }
  const bool isKept = journal_ == nullptr || !journal_->beforeDelete(NativeSystem::diskName(name));
  return isKept && NativeSystem::deleteFile(name);
}

std::vector<FolderEntry> ConsoleSystem::listFolder(const std::string& folder) {
  settle();
  return NativeSystem::listFolder(inBoundFolder(folder));
}

std::string ConsoleSystem::outputPath(const std::string& name) {
  return NativeSystem::diskName(inBoundFolder(name));
}

std::string ConsoleSystem::diskName(const std::string& name) {
  return NativeSystem::diskName(bound(name));
}

std::string ConsoleSystem::startFolder() {
  std::error_code failure;
  const std::filesystem::path folder = std::filesystem::current_path(failure);
  return failure ? "" : (folder / "").string();
}

std::string ConsoleSystem::newName(const std::string& stem) const {
  std::string name = stem;
  for (int number = 2; kindOf(startFolder_ + name) != PathKind::missing; ++number) {
    name = stem + std::to_string(number);
  }
  return name;
}

void ConsoleSystem::showAs(const std::vector<FoundFile>& files) {
  for (const FoundFile& file : files) {
    shownAs_[upperCase(file.name)] = file.path;
  }
}

std::string ConsoleSystem::shownName(const std::string& name) {
  constexpr bool isWindows = std::filesystem::path::preferred_separator == '\\';
  if (const auto typed = shownAs_.empty() ? shownAs_.end() : shownAs_.find(upperCase(name)); typed != shownAs_.end()) {
    return typed->second;
  }
  const auto page = isWindows ? std::nullopt : pages_.find(name);  // its name is the disk's there
  std::string path = page ? std::string(*page) : outputPath(name);
  const std::string start = path.substr(0, startFolder_.size());
  const bool isInside = isWindows ? upperCase(start) == upperCase(startFolder_) : start == startFolder_;
  if (startFolder_.empty() || !isInside || path.size() == start.size()) {
    return path;
  }
  const std::string rest = path.substr(start.size());
  return rest.starts_with('-') ? "./" + rest : rest;
}

std::string ConsoleSystem::shownFolder(const std::string& path) {
  const std::string inFolder = (std::filesystem::path(path) / "").string();
  return inFolder == startFolder_ ? "." : shownName(NativeSystem::coreName(path));
}

}  // namespace kiv
