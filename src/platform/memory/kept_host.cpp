#include "platform/memory/kept_host.h"

#include <algorithm>
#include <utility>

namespace kiv {
namespace {

class KeptInput : public InputFile {
 public:
  explicit KeptInput(std::shared_ptr<const std::string> content) : content_(std::move(content)) {}

  std::optional<std::size_t> read(std::span<char> room) override {
    const std::size_t count = std::min(room.size(), content_->size() - std::min(position_, content_->size()));
    std::copy_n(content_->begin() + static_cast<std::ptrdiff_t>(position_), count, room.begin());
    position_ += count;
    return count;
  }

 private:
  std::shared_ptr<const std::string> content_;
  std::size_t position_ = 0;
};

class KeptOutput : public OutputFile {
 public:
  explicit KeptOutput(std::shared_ptr<std::string> content) : content_(std::move(content)) {}

  std::optional<std::string> write(std::string_view bytes) override {
    *content_ += bytes;
    return std::nullopt;
  }

 private:
  std::shared_ptr<std::string> content_;
};

}  // namespace

std::string KeptHost::key(const std::string& name) {
  if (name.find('\\') != std::string::npos) {
    return upperCase(name);
  }
  const std::string folder = currentFolder();
  return upperCase(folder + (folder.ends_with('\\') ? "" : "\\") + name);
}

/// A folder that is there lists at least itself.
bool KeptHost::hasFolder(const std::string& place) {
  const std::string folder = place.substr(0, place.rfind('\\') + 1);
  const auto [known, isNew] = folders_.emplace(folder, false);
  if (isNew) {
    known->second = !world_.listFolder(folder).empty();
  }
  return known->second;
}

std::unique_ptr<InputFile> KeptHost::openInput(const std::string& name) {
  const auto kept = files_.find(key(name));
  if (kept == files_.end()) {
    return world_.openInput(name);
  }
  return kept->second ? std::make_unique<KeptInput>(kept->second) : nullptr;
}

std::unique_ptr<OutputFile> KeptHost::openOutput(const std::string& name) {
  auto content = std::make_shared<std::string>();
  files_[key(name)] = content;
  return std::make_unique<KeptOutput>(std::move(content));
}

std::optional<std::string> KeptHost::replaceFile(const std::string& name, std::string_view bytes) {
  const std::string place = key(name);
  if (!hasFolder(place)) {
    return "The folder does not exist";
  }
  if (places_.insert(place).second) {
    replaced_.push_back({name, openInput(name) != nullptr});
  }
  files_[place] = std::make_shared<std::string>(bytes);
  return std::nullopt;
}

bool KeptHost::deleteFile(const std::string& name) {
  const bool existed = openInput(name) != nullptr;
  files_[key(name)] = nullptr;
  return existed;
}

}  // namespace kiv
