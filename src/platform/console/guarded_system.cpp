#include "platform/console/guarded_system.h"

#include <algorithm>
#include <cstring>
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
    written_->add(bytes);
    return file_->write(bytes);
  }

 private:
  std::unique_ptr<OutputFile> file_;
  std::shared_ptr<Written> written_;
};

/// A file that ends the program unless it is what was written.
class CheckedInput : public InputFile {
 public:
  CheckedInput(std::unique_ptr<InputFile> file, Written expected, std::string name)
      : file_(std::move(file)), expected_(expected), name_(std::move(name)) {}

  std::optional<std::size_t> read(std::span<char> buffer) override {
    const auto got = file_->read(buffer);
    if (got) {
      read_.add({buffer.data(), *got});
      const bool isEnd = *got == 0 && !buffer.empty();
      if (read_.size > expected_.size || (isEnd && !read_.isSame(expected_))) {
        endProgram(messages::fileChanged(name_));
      }
    }
    return got;
  }

 private:
  std::unique_ptr<InputFile> file_;
  Written expected_;
  Written read_;
  std::string name_;
};

}  // namespace

GuardedSystem::GuardedSystem(Guard guard) : guard_(guard) {
  if (guard == Guard::on) {
    useExactFolders();
  }
}

void GuardedSystem::Written::add(std::string_view bytes) {
  constexpr std::uint64_t prime = 1099511628211U;
  // Whole words at offsets that the pieces in which a file is read and written do not change.
  const std::size_t at = size % sizeof(word);
  size += bytes.size();
  if (at != 0) {
    const std::size_t count = std::min(bytes.size(), sizeof(word) - at);
    std::memcpy(reinterpret_cast<char*>(&word) + at, bytes.data(), count);
    bytes.remove_prefix(count);
    if (at + count < sizeof(word)) {
      return;
    }
    sum = (sum ^ word) * prime;
  }
  for (; bytes.size() >= sizeof(word); bytes.remove_prefix(sizeof(word))) {
    std::memcpy(&word, bytes.data(), sizeof(word));
    sum = (sum ^ word) * prime;
  }
  word = 0;
  std::memcpy(&word, bytes.data(), bytes.size());
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
             : std::make_unique<CheckedInput>(std::move(file), *own->second.written, own->second.name);
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
