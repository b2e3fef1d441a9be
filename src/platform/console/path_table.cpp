#include "platform/console/path_table.h"

namespace kiv {

void PathTable::add(std::string_view name, std::string_view path) {
  const std::uint32_t number = names_.add(name);
  if (number == firstFile_.size()) {
    firstFile_.push_back(static_cast<std::uint32_t>(files_.size()));
  }
  files_.push_back({number, paths_.add(path)});
}

std::optional<std::string_view> PathTable::find(std::string_view name) const {
  const auto number = names_.find(name);
  return number ? std::optional(path(firstFile_[*number])) : std::nullopt;
}

std::vector<FoundFile> PathTable::files() const {
  std::vector<FoundFile> files;
  files.reserve(files_.size());
  for (std::size_t file = 0; file < files_.size(); ++file) {
    files.push_back({std::string(name(file)), std::string(path(file))});
  }
  return files;
}

std::vector<std::string> PathTable::names() const {
  std::vector<std::string> names;
  names.reserve(files_.size());
  for (std::size_t file = 0; file < files_.size(); ++file) {
    names.emplace_back(name(file));
  }
  return names;
}

std::optional<std::string_view> FilePaths::find(std::string_view name) const {
  const auto path = pages != nullptr ? pages->find(name) : std::nullopt;
  return path || written == nullptr ? path : written->find(name);
}

}  // namespace kiv
