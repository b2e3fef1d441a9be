#include "platform/posix/plain_path.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <new>
#include <system_error>

namespace kiv {
namespace {

/// Goes from a folder to the one above; the path has no separator at its end, that of the root is "".
void goUp(std::string& path) {
  std::error_code failure;
  if (std::filesystem::is_symlink(path, failure)) {
    const auto target = std::filesystem::canonical(path, failure);
    checkMemory(failure);
    path = failure ? path : target.string();
  }
  path.resize(std::min(path.rfind(separator), path.size()));
}

}  // namespace

void checkMemory(const std::error_code& failure) {
  if (failure == std::errc::not_enough_memory) {
    throw std::bad_alloc();
  }
}

std::string plainPath(std::string_view path) {
  std::string plain;
  bool isFolder = true;
  while (!path.empty()) {
    const std::size_t end = std::min(path.find(separator), path.size());
    const std::string_view component = path.substr(0, end);
    isFolder = end < path.size() || component == "." || component == "..";
    path.remove_prefix(std::min(end + 1, path.size()));
    if (component == "..") {
      goUp(plain);
    } else if (!component.empty() && component != ".") {
      (plain += separator) += component;
    }
  }
  return isFolder ? plain + separator : plain;
}

std::optional<std::string> linkTarget(const std::string& path) {
  constexpr int mostLinks = 40;  // as many as systems follow
  std::error_code failure;
  std::filesystem::path target = path;
  for (int link = 0; std::filesystem::is_symlink(target, failure); ++link) {
    const auto next = std::filesystem::read_symlink(target, failure);
    checkMemory(failure);
    if (link == mostLinks) {
      return std::nullopt;
    }
    if (failure) {
      return path;
    }
    target = target.parent_path() / next;
  }
  if (target == path) {
    return path;
  }
  const auto folder = std::filesystem::canonical(target.has_parent_path() ? target.parent_path() : ".", failure);
  checkMemory(failure);
  return failure ? path : (folder / target.filename()).string();
}

}  // namespace kiv
