#include "apps/kivsys/safety/made_folder.h"

#include <utility>

#include "platform/console/error_line.h"
#include "platform/native_file.h"

namespace kiv {
namespace {

std::string withoutSeparators(std::string path) {
  while (path.size() > 1 && (path.ends_with('/') || path.ends_with('\\')) && !path.ends_with(":\\")) {
    path.pop_back();
  }
  return path;
}

/// The folder above; "." for a name alone.
std::string above(const std::string& path) {
  const std::size_t separator = path.find_last_of("\\/");
  return separator == std::string::npos ? "." : path.substr(0, separator + 1);
}

}  // namespace

PlannedFolder::PlannedFolder(std::string path, std::string typed)
    : typed_(std::move(typed)),
      path_(withoutSeparators(std::move(path))),
      isMissing_(kindOf(path_) == PathKind::missing) {}

std::optional<std::string> PlannedFolder::refusal() const {
  const PathKind kind = kindOf(path_);
  if (kind == PathKind::folder) {
    return std::nullopt;
  }
  if (kind != PathKind::missing) {
    return "not a folder: " + typed_;
  }
  return kindOf(above(path_)) == PathKind::folder
             ? std::nullopt
             : std::optional("cannot make the folder " + typed_ + ", as the one above it does not exist");
}

std::optional<std::string> PlannedFolder::make() const {
  if (kindOf(path_) == PathKind::folder) {
    return std::nullopt;
  }
  if (const auto failure = makeFolder(path_)) {
    return "cannot make the folder " + typed_ + ": " + *failure;
  }
  printError("made the folder " + typed_);
  return std::nullopt;
}

}  // namespace kiv
