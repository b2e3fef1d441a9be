#include "platform/memory/quiet_host.h"

namespace kiv {
namespace {

class MemoryInput : public InputFile {
 public:
  explicit MemoryInput(std::string content) : content_(std::move(content)) {}

  std::optional<std::size_t> read(std::span<char> room) override {
    const std::size_t count = content_.copy(room.data(), room.size(), position_);
    position_ += count;
    return count;
  }

 private:
  std::string content_;
  std::size_t position_ = 0;
};

class MemoryOutput : public OutputFile {
 public:
  explicit MemoryOutput(std::string& content) : content_(content) {}

  std::optional<std::string> write(std::string_view bytes) override {
    content_ += bytes;
    return std::nullopt;
  }

 private:
  std::string& content_;
};

}  // namespace

std::string QuietHost::written(const std::string& name) {
  const auto found = written_.find(upperCase(name));
  return found == written_.end() ? "" : found->second;
}

Answer QuietHost::message(Icon /*icon*/, std::string_view text, Buttons buttons) {
  messages_.emplace_back(text);
  return buttons == Buttons::ok ? Answer::ok : Answer::no;
}

std::unique_ptr<InputFile> QuietHost::openInput(const std::string& name) {
  const std::string upper = upperCase(name);
  if (const auto found = written_.find(upper); found != written_.end()) {
    return std::make_unique<MemoryInput>(found->second);
  }
  const auto alias = aliases_.find(upper);
  return disk_.openInput(alias == aliases_.end() ? name : alias->second);
}

std::unique_ptr<OutputFile> QuietHost::openOutput(const std::string& name) {
  std::string& content = written_[upperCase(name)];
  content.clear();
  return std::make_unique<MemoryOutput>(content);
}

std::optional<std::string> QuietHost::replaceFile(const std::string& name, std::string_view bytes) {
  written_[upperCase(name)] = bytes;
  return std::nullopt;
}

}  // namespace kiv
