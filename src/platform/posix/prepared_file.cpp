#include "platform/prepared_file.h"

#include <cstdio>
#include <utility>

#include <sys/stat.h>
#include <unistd.h>

#include "platform/posix/file_destination.h"
#include "platform/posix/own_files.h"
#include "platform/posix/posix_files.h"

namespace kiv {
namespace {

std::optional<std::string> writeWhole(const Descriptor& file, std::string_view bytes,
                                      const FileDestination& destination) {
  struct stat old {};
  const bool isNew = ::stat(destination.path.c_str(), &old) != 0;
  if (auto failure = writeAll(file, bytes)) {
    return failure;
  }
  const bool hasMode = isNew ? ::fchmod(file.number(), destination.mode) == 0 : takeOwnerAndMode(file, old);
  return hasMode && ::fsync(file.number()) == 0 ? std::nullopt : std::optional(lastFailure());
}

}  // namespace

std::string temporaryStart(const std::string& mark) {
  return mark.empty() ? ".kiv-" : ".kiv-" + mark + "-";
}

std::optional<std::string> PreparedFile::fill(const FileDestination& destination, std::string_view bytes) {
  target_ = destination.path;
  std::string path = destination.folder + temporaryStart(destination.mark) + "XXXXXX";
  const Descriptor file(::mkstemp(path.data()));
  if (!file.isOpen()) {
    return lastFailure();
  }
  path_ = std::move(path);
  return writeWhole(file, bytes, destination);
}

std::optional<std::string> PreparedFile::move(const std::string& from, const std::string& to, Existing existing) {
  if (existing == Existing::kept) {
    return moveToFreePath(from, to);
  }
  return ::rename(from.c_str(), to.c_str()) == 0 ? std::nullopt : std::optional(lastFailure());
}

void PreparedFile::remove(const std::string& path) {
  ::unlink(path.c_str());
}

}  // namespace kiv
