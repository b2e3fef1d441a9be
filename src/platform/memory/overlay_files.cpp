#include "platform/memory/overlay_files.h"

#include <utility>

#include "platform/memory/memory_input.h"
#include "platform/separators.h"

namespace kiv {
namespace {

class MemoryOutput : public OutputFile {
 public:
  explicit MemoryOutput(std::shared_ptr<std::string> content) : content_(std::move(content)) {}

  std::optional<std::string> write(std::string_view bytes) override {
    *content_ += bytes;
    return std::nullopt;
  }

 private:
  std::shared_ptr<std::string> content_;
};

}  // namespace

std::string OverlayFiles::fullName(const std::string& name) const {
  if (lastBackslash(machine_, name) != std::string::npos) {
    return machine_.upperCase(name);
  }
  const std::string folder = below_ == nullptr ? currentFolder_ : below_->currentFolder();
  return machine_.upperCase(folder + (endsWithBackslash(machine_, folder) ? "" : "\\") + name);
}

/// A folder that exists lists at least itself.
bool OverlayFiles::hasFolder(const std::string& key) {
  if (below_ == nullptr) {
    return true;
  }
  const std::string folder = key.substr(0, lastBackslash(machine_, key) + 1);
  const auto [known, isNew] = folders_.emplace(folder, false);
  if (isNew) {
    known->second = !below_->listFolder(folder).empty();
  }
  return known->second;
}

void OverlayFiles::addFolder(const std::string& name) {
  folders_[machine_.upperCase(name)] = true;
}

void OverlayFiles::addFile(const std::string& name, std::string content) {
  files_[fullName(name)] = std::make_shared<std::string>(std::move(content));
}

const std::string* OverlayFiles::find(const std::string& name) const {
  const auto kept = files_.find(fullName(name));
  return kept == files_.end() ? nullptr : kept->second.get();
}

std::vector<std::string> OverlayFiles::names() const {
  std::vector<std::string> names;
  for (const auto& [name, content] : files_) {
    if (content != nullptr) {
      names.push_back(name);
    }
  }
  return names;
}

std::vector<std::string> OverlayFiles::replacedNames() const {
  std::vector<std::string> names;
  for (const Replaced& file : replaced_) {
    names.push_back(file.name);
  }
  return names;
}

void OverlayFiles::clear() {
  files_.clear();
  aliases_.clear();
  replaced_.clear();
  replacedKeys_.clear();
}

std::unique_ptr<InputFile> OverlayFiles::openInput(const std::string& name) {
  const std::string key = fullName(name);
  if (const auto kept = files_.find(key); kept != files_.end()) {
    return kept->second ? std::make_unique<MemoryInput>(kept->second) : nullptr;
  }
  if (below_ == nullptr) {
    return nullptr;
  }
  return below_->openInput(nameBelow(name, key));
}

bool OverlayFiles::willOpen(const std::string& name, Fetch fetch) {
  const std::string key = fullName(name);
  const bool isBelow = below_ != nullptr && !files_.contains(key);
  return isBelow ? below_->willOpen(nameBelow(name, key), fetch) : Files::willOpen(name, fetch);
}

/// The name by which the files below know a file.
const std::string& OverlayFiles::nameBelow(const std::string& name, const std::string& key) const {
  const auto alias = aliases_.find(key);
  return alias == aliases_.end() ? name : alias->second;
}

std::unique_ptr<OutputFile> OverlayFiles::openOutput(const std::string& name) {
  auto content = std::make_shared<std::string>();
  files_[fullName(name)] = content;
  return std::make_unique<MemoryOutput>(std::move(content));
}

std::optional<std::string> OverlayFiles::replaceFile(const std::string& name, std::string_view bytes) {
  const std::string key = fullName(name);
  if (!hasFolder(key)) {
    return "The folder does not exist";
  }
  if (replacedKeys_.insert(key).second) {
    replaced_.push_back({name, OverlayFiles::openInput(name) != nullptr});
  }
  files_[key] = std::make_shared<std::string>(bytes);
  return std::nullopt;
}

bool OverlayFiles::deleteFile(const std::string& name) {
  const bool existed = OverlayFiles::openInput(name) != nullptr;
  files_[fullName(name)] = nullptr;
  return existed;
}

std::vector<FolderEntry> OverlayFiles::listFolder(const std::string& folder) {
  return below_ == nullptr ? std::vector<FolderEntry>() : below_->listFolder(folder);
}

std::string OverlayFiles::currentFolder() {
  return below_ == nullptr ? currentFolder_ : below_->currentFolder();
}

std::optional<std::string> OverlayFiles::shortName(const std::string& path) {
  return below_ == nullptr ? std::nullopt : below_->shortName(path);
}

}  // namespace kiv
