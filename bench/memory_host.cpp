#include "bench/memory_host.h"

#include <algorithm>
#include <iostream>

namespace kiv::bench {
namespace {

class MemoryInput : public InputFile {
 public:
  explicit MemoryInput(std::string_view bytes) : left_(bytes) {}

  std::optional<std::size_t> read(std::span<char> room) override {
    const std::size_t count = left_.copy(room.data(), room.size());
    left_.remove_prefix(count);
    return count;
  }

 private:
  std::string_view left_;
};

class CountingOutput : public OutputFile {
 public:
  explicit CountingOutput(std::size_t& bytes) : bytes_(bytes) {}

  std::optional<std::string> write(std::string_view bytes) override {
    bytes_ += bytes.size();
    return std::nullopt;
  }

 private:
  std::size_t& bytes_;
};

}  // namespace

Answer MemoryHost::message(Icon /*icon*/, std::string_view text, Buttons buttons) {
  std::cerr << text << '\n';
  return buttons == Buttons::yesNo ? Answer::yes : Answer::ok;
}

bool MemoryHost::showText(const std::string& /*name*/) {
  return true;
}

std::unique_ptr<InputFile> MemoryHost::openInput(const std::string& name) {
  const auto file = files.find(name);
  return file == files.end() ? nullptr : std::make_unique<MemoryInput>(file->second);
}

std::unique_ptr<OutputFile> MemoryHost::openOutput(const std::string& /*name*/) {
  return std::make_unique<CountingOutput>(bytesWritten);
}

std::optional<std::string> MemoryHost::replaceFile(const std::string& /*name*/, std::string_view bytes) {
  bytesWritten += bytes.size();
  return std::nullopt;
}

std::optional<ShellFailure> MemoryHost::runInShell(const std::string& /*command*/, WindowStyle /*style*/) {
  return ShellFailure{0, "there is no shell"};
}

}  // namespace kiv::bench
