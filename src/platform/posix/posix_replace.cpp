// How files are put in their places.

#include <cstdio>
#include <system_error>
#include <utility>

#include <sys/stat.h>
#include <unistd.h>

#include "platform/posix/own_files.h"
#include "platform/posix/plain_path.h"
#include "platform/posix/posix_files.h"
#include "platform/posix/posix_system.h"

namespace kiv {
std::optional<std::string> PosixSystem::replaceFile(const std::string& name, std::string_view bytes) {
  return putFile(name, bytes, Existing::replaced);
}

std::optional<std::string> PosixSystem::createFile(const std::string& name, std::string_view bytes) {
  return putFile(name, bytes, Existing::kept);
}

std::optional<std::string> PosixSystem::putFile(const std::string& name, std::string_view bytes, Existing existing) {
  Destination destination;
  auto failure = findDestination(name, destination);
  failure = failure ? failure : put(destination, bytes, existing);
  if (!failure) {
    noteReplaced(destination);
  }
  return failure;
}

std::optional<std::string> PosixSystem::findDestination(const std::string& name, Destination& destination) {
  const auto end = linkTarget(paths_.resolve(name));
  if (!end) {
    return std::make_error_code(std::errc::too_many_symbolic_link_levels).message();
  }
  destination.path = *end;
  destination.folder = end->substr(0, end->rfind(separator) + 1);
  destination.mark = mark_;
  destination.isFolderCurrent = paths_.isCurrent(destination.folder);
  destination.mode = readableByAll & ~withheldMode() & modeLimit_;
  destination.signals = std::make_shared<SignalsHeld>();
  return std::nullopt;
}

std::optional<std::string> PosixSystem::putAt(const Destination& destination, std::string_view bytes) {
  return put(destination, bytes, Existing::replaced);
}

std::optional<std::string> PosixSystem::put(const Destination& destination, std::string_view bytes, Existing existing) {
  const std::string& target = destination.path;
  std::string beside = destination.folder + temporaryStart(destination.mark) + "XXXXXX";
  const SignalsHeld held;  // by the thread that this is
  const Descriptor file(::mkstemp(beside.data()));
  if (!file.isOpen()) {
    return lastFailure();
  }
  struct stat old {};
  const bool isNew = ::stat(target.c_str(), &old) != 0;
  auto failure = writeAll(file, bytes);
  if (!failure) {
    const bool hasMode = isNew ? ::fchmod(file.number(), destination.mode) == 0 : takeOwnerAndMode(file, old);
    const bool isWritten = hasMode && ::fsync(file.number()) == 0;
    failure = isWritten ? std::nullopt : std::optional(lastFailure());
  }
  if (!failure && existing == Existing::kept) {
    failure = moveToFreePath(beside, target);
  } else if (!failure && ::rename(beside.c_str(), target.c_str()) != 0) {
    failure = lastFailure();
  }
  if (failure) {
    ::unlink(beside.c_str());
  }
  return failure;
}

void PosixSystem::noteReplaced(const Destination& destination) {
  unflushed_.insert(destination.folder);
  if (destination.isFolderCurrent) {
    paths_.addToListing(destination.path);
  }
}

std::optional<std::string> PosixSystem::flushFolders() {
  for (const std::string& folder : std::exchange(unflushed_, {})) {
    const std::string path = folder.empty() ? "." : folder;
    if (const auto failure = flushFolder(path)) {
      return path + ": " + *failure;
    }
  }
  return std::nullopt;
}

}  // namespace kiv
