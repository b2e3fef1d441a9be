// How files are put in their places.

#include <system_error>
#include <utility>

#include <sys/stat.h>
#include <unistd.h>

#include "platform/posix/own_files.h"
#include "platform/posix/plain_path.h"
#include "platform/posix/posix_files.h"
#include "platform/posix/posix_system.h"

namespace kiv {

/// What files that are under way at the same time have in common. It is made and ends on the run's thread.
struct FilesUnderWay {
  FilesUnderWay(PathFinder& paths, const std::string& folder) : firstFolder(paths, folder) {}

  SignalsHeld signals;
  PathFinder::HeldFolder firstFolder;
};

std::optional<std::string> PosixSystem::replaceFile(const std::string& name, std::string_view bytes) {
  return putFile(name, bytes, Existing::replaced);
}

std::optional<std::string> PosixSystem::createFile(const std::string& name, std::string_view bytes) {
  return putFile(name, bytes, Existing::kept);
}

std::optional<std::string> PosixSystem::putFile(const std::string& name, std::string_view bytes, Existing existing) {
  Destination destination;
  PreparedFile file;
  auto failure = findDestination(paths_.resolve(name), destination);
  failure = failure ? failure : file.prepare(destination, bytes);
  if (!failure) {
    failure = existing == Existing::replaced ? file.place() : file.placeIfFree();
  }
  if (!failure) {
    noteReplaced(destination);
  }
  return failure;
}

std::optional<std::string> PosixSystem::findDestination(const std::string& path, Destination& destination) {
  const auto end = linkTarget(path);
  if (!end) {
    return std::make_error_code(std::errc::too_many_symbolic_link_levels).message();
  }
  destination.path = *end;
  destination.folder = end->substr(0, end->rfind(separator) + 1);
  destination.mark = mark_;
  auto underWay = underWay_.lock();
  if (!underWay) {
    underWay = std::make_shared<FilesUnderWay>(paths_, destination.folder);
    underWay_ = underWay;
  }
  destination.isFolderCurrent = paths_.isCurrent(destination.folder);
  destination.mode = readableByAll & ~withheldMode() & modeLimit_;
  destination.others = std::move(underWay);
  return std::nullopt;
}

bool PosixSystem::areSignalsWaiting() {
  return SignalsHeld::areSomeWaiting();
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
