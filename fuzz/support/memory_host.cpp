#include "fuzz/support/memory_host.h"

#include <algorithm>

namespace kiv::fuzz {
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

char capital(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 0x20) : c;
}

bool sameName(std::string_view one, std::string_view other) {
  return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                    [](char a, char b) { return capital(a) == capital(b); });
}

}  // namespace

void MemoryHost::restart() {
  files_.clear();
  profile.clear();
  refusesDeletion = false;
  messages = 0;
  lastMessage.clear();
}

MemoryHost::File* MemoryHost::findFile(std::string_view name) {
  const auto found =
      std::find_if(files_.begin(), files_.end(), [&](const auto& file) { return sameName(file->name, name); });
  return found == files_.end() ? nullptr : found->get();
}

void MemoryHost::addFile(std::string_view name, std::string content) {
  if (File* file = findFile(name)) {
    file->content = std::move(content);
  } else {
    files_.push_back(std::make_unique<File>(File{std::string(name), std::move(content)}));
  }
}

const std::string* MemoryHost::find(std::string_view name) const {
  const auto found =
      std::find_if(files_.begin(), files_.end(), [&](const auto& file) { return sameName(file->name, name); });
  return found == files_.end() ? nullptr : &(*found)->content;
}

Answer MemoryHost::message(Icon, std::string_view text, Buttons buttons) {
  ++messages;
  lastMessage = text;
  return buttons == Buttons::ok ? Answer::ok : Answer::yes;
}

std::unique_ptr<InputFile> MemoryHost::openInput(const std::string& name) {
  const std::string* content = find(name);
  return content == nullptr ? nullptr : std::make_unique<MemoryInput>(*content);
}

std::unique_ptr<OutputFile> MemoryHost::openOutput(const std::string& name) {
  addFile(name, "");
  return std::make_unique<MemoryOutput>(findFile(name)->content);
}

std::optional<std::string> MemoryHost::replaceFile(const std::string& name, std::string_view bytes) {
  addFile(name, std::string(bytes));
  return std::nullopt;
}

bool MemoryHost::deleteFile(const std::string& name) {
  return !refusesDeletion && std::erase_if(files_, [&](const auto& file) { return sameName(file->name, name); }) > 0;
}

std::string MemoryHost::upperCase(std::string_view text) {
  std::string upper(text);
  // The capitals of Western Europe's code page lie 32 before their small letters; the sign of division is none.
  for (char& c : upper) {
    const auto code = static_cast<unsigned char>(c);
    c = code >= 0xE0 && code <= 0xFE && code != 0xF7 ? static_cast<char>(code - 0x20) : capital(c);
  }
  return upper;
}

std::string MemoryHost::profileKey(const std::string& key) {
  const auto found = profile.find(key);
  return found == profile.end() ? "" : found->second;
}

}  // namespace kiv::fuzz
