#include "platform/console/guarded_system.h"

#include <algorithm>
#include <utility>

#include "messages/run_time_errors.h"
#include "platform/console/stop_signals.h"

namespace kiv {
namespace {

using Written = GuardedSystem::Written;

/// A file that remembers what was written.
class RememberingOutput : public OutputFile {
 public:
  RememberingOutput(std::unique_ptr<OutputFile> file, std::shared_ptr<Written> written)
      : file_(std::move(file)), written_(std::move(written)) {}
  RememberingOutput(const RememberingOutput&) = delete;
  RememberingOutput& operator=(const RememberingOutput&) = delete;
  ~RememberingOutput() override { written_->complete = !hasStopped(); }

  std::optional<std::string> write(std::string_view bytes) override {
    written_->sum.add(bytes);
    return file_->write(bytes);
  }

 private:
  std::unique_ptr<OutputFile> file_;
  std::shared_ptr<Written> written_;
};

/// A file that ends the program unless it is what was written.
class CheckedInput : public InputFile {
 public:
  CheckedInput(std::unique_ptr<InputFile> file, const FileSum& expected, std::string name)
      : file_(std::move(file)), expected_(expected), name_(std::move(name)) {}

  std::optional<std::size_t> read(std::span<char> buffer) override {
    const auto got = file_->read(buffer);
    if (got) {
      read_.add({buffer.data(), *got});
      const bool isEnd = *got == 0 && !buffer.empty();
      if (read_.size() > expected_.size() || (isEnd && read_ != expected_)) {
        endProgram(messages::fileChanged(name_));
      }
    }
    return got;
  }

 private:
  std::unique_ptr<InputFile> file_;
  FileSum expected_;
  FileSum read_;
  std::string name_;
};

}  // namespace

GuardedSystem::GuardedSystem(Guard guard) : guard_(guard) {
  if (guard == Guard::on) {
    useExactFolders();
  }
}

std::unique_ptr<InputFile> GuardedSystem::openInput(const std::string& name) {
  endIfStopped();
  auto file = NativeSystem::openInput(name);
  if (!file || ownFiles_.empty()) {
    return file;
  }
  const auto own = ownFiles_.find(upperCase(name));
  return own == ownFiles_.end()
             ? std::move(file)
             : std::make_unique<CheckedInput>(std::move(file), own->second.written->sum, own->second.name);
}

std::unique_ptr<OutputFile> GuardedSystem::openOutput(const std::string& name) {
  endIfStopped();
  if (guard_ == Guard::off) {
    return NativeSystem::openOutput(name);
  }
  auto file = openOwnOutput(name);
  if (!file) {
    return nullptr;
  }
  auto written = std::make_shared<Written>();
  ownFiles_.insert_or_assign(upperCase(name), OwnFile{name, written});
  return std::make_unique<RememberingOutput>(std::move(file), std::move(written));
}

std::optional<std::string> GuardedSystem::replaceFile(const std::string& name, std::string_view bytes) {
  endIfStopped();
  auto failure = NativeSystem::replaceFile(name, bytes);
  if (!failure) {
    addReplaced(name);
  }
  return failure;
}

std::optional<std::string> GuardedSystem::createFile(const std::string& name, std::string_view bytes) {
  endIfStopped();
  auto failure = NativeSystem::createFile(name, bytes);
  if (!failure) {
    addReplaced(name);
  }
  return failure;
}

void GuardedSystem::addReplaced(const std::string& name) {
  if (replacedCount_++ == 0) {
    firstReplaced_ = name;
  }
  lastReplaced_ = name;
}

std::string GuardedSystem::writtenWords() {
  std::string words;
  for (const auto& [key, own] : ownFiles_) {
    words += (words.empty() ? "" : ", ") + NativeSystem::diskName(own.name) +
             (own.written->complete ? "" : " (not complete)");
  }
  if (replacedCount_ > 0) {
    words += (words.empty() ? "" : ", ") + NativeSystem::diskName(firstReplaced_);
  }
  if (replacedCount_ > 1) {
    words += " to " + NativeSystem::diskName(lastReplaced_) + " (" + std::to_string(replacedCount_) + " files)";
  }
  return words.empty() ? "nothing" : words;
}

}  // namespace kiv
