#include "platform/console/write_guard.h"

#include <cstddef>

#include "base/number_hash.h"

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

std::size_t hashOf(const FileIdentity& identity) {
  return NumberHash().add(identity.volume).add(identity.file).value();
}

}  // namespace

std::optional<std::uint32_t> WriteGuard::KnownFiles::find(const FileIdentity& identity) const {
  const auto file = index_.find(hashOf(identity), [&](std::uint32_t f) { return files_[f].identity == identity; });
  return file ? std::optional(files_[*file].path) : std::nullopt;
}

void WriteGuard::KnownFiles::set(const FileIdentity& identity, std::uint32_t path) {
  const std::uint32_t file = index_.findOrAdd(
      hashOf(identity), [&](std::uint32_t f) { return files_[f].identity == identity; },
      [this](std::uint32_t f) { return hashOf(files_[f].identity); },
      [&] {
        files_.push_back({identity, path});
      });
  files_[file].path = path;
}

void WriteGuard::addInput(const std::string& path, const std::optional<FileIdentity>& identity) {
  const auto known = identity ? identity : identityOf(path);
  if (known && !inputs_.find(*known)) {
    inputs_.set(*known, paths_.add(path));
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
  if (const auto input = inputs_.find(*identity)) {
    return path + " is not written, as it is the same file as the input " + std::string(paths_[*input]);
  }
  if (const auto other = written_.find(*identity); other && paths_[*other] != path) {
    return path + " is not written, as it is the same file as " + std::string(paths_[*other]) +
           ", which the run has written";
  }
  return std::nullopt;
}

void WriteGuard::addWritten(const std::string& path) {
  if (const auto identity = identityOf(path)) {
    written_.set(*identity, paths_.add(path));
  }
}

bool PageStamps::isSame(std::string_view path, const std::optional<FileStamp>& stamp) {
  const std::uint32_t number = paths_.add(path);
  if (stamps_.size() <= number) {
    stamps_.resize(number + std::size_t{1});
  }
  std::optional<FileStamp>& first = stamps_[number];
  if (!stamp) {
    return !first;
  }
  first = first ? first : stamp;
  return first == stamp;
}

void PageStamps::forget(std::string_view path) {
  const auto number = paths_.find(path);
  if (number && *number < stamps_.size()) {
    stamps_[*number].reset();
  }
}

}  // namespace kiv
