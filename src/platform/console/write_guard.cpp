#include "platform/console/write_guard.h"

#include <cstddef>

namespace kiv {
namespace {

/// The folder of a path, with its separator; "." for a name alone.
std::string folderOf(const std::string& path) {
#ifdef _WIN32
  constexpr const char* separators = "\\/";
#else
  constexpr const char* separators = "/";
#endif
  const std::size_t separator = path.find_last_of(separators);
  return separator == std::string::npos ? "." : path.substr(0, separator + 1);
}

}  // namespace

void WriteGuard::addInput(const std::string& path, const std::optional<FileIdentity>& identity) {
  if (const auto known = identity ? identity : identityOf(path)) {
    inputs_.emplace(*known, path);
  }
}

std::optional<std::string> WriteGuard::refusal(const std::string& path) {
  const std::string folder = folderOf(path);
  if (const auto identity = identityOf(folder)) {
    const auto [known, isNew] = folders_.emplace(folder, *identity);
    if (!isNew && known->second != *identity) {
      return path + " is not written, as its folder has been replaced since the run began";
    }
  }
  const auto identity = identityOf(path);
  if (!identity) {
    return std::nullopt;
  }
  if (const auto input = inputs_.find(*identity); input != inputs_.end()) {
    return path + " is not written, as it is the same file as the input " + input->second;
  }
  if (const auto other = written_.find(*identity); other != written_.end() && other->second != path) {
    return path + " is not written, as it is the same file as " + other->second + ", which the run has written";
  }
  return std::nullopt;
}

void WriteGuard::addWritten(const std::string& path) {
  if (const auto identity = identityOf(path)) {
    written_.insert_or_assign(*identity, path);
  }
}

bool PageStamps::isSame(const std::string& path, const std::optional<FileStamp>& stamp) {
  if (!stamp) {
    return !stamps_.contains(path);
  }
  return stamps_.emplace(path, *stamp).first->second == *stamp;
}

}  // namespace kiv
