#include "platform/posix/path_finder.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <utility>

#include <dirent.h>
#include <sys/stat.h>

#include "platform/posix/plain_path.h"
#include "platform/posix/posix_files.h"
#include "platform/posix/utf8.h"

namespace kiv {
namespace {

/// The system would treat the part up to such a byte as the whole name.
bool hasZeroByte(const std::string& name) {
  return name.find('\0') != std::string::npos;
}

/// No system opens a path that is longer, so none is searched for.
constexpr std::size_t longestPath = 4096;

/// A name of the core, with the separators of the disk.
struct Path {
  explicit Path(std::string name) : file(std::move(name)) {
    std::replace(file.begin(), file.end(), '\\', separator);
    folder = file.substr(0, file.rfind(separator) + 1);
    file.erase(0, folder.size());
  }

  std::string file;
  std::string folder;  ///< with its separator; "" when the name has none
};

bool exists(const std::string& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0;
}

/// Whether the folder is there; the current one, with no name, always is.
bool isFolder(const std::string& path) {
  struct stat status {};
  return path.empty() || (::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode));
}

struct FolderCloser {
  void operator()(DIR* folder) const { ::closedir(folder); }
};

/// Whether the disk's clock, which may be a coarse one, can give this time to another change still.
bool mayComeAgain(const std::timespec& changed) {
  using namespace std::chrono_literals;
  const auto age = std::chrono::system_clock::now().time_since_epoch() - std::chrono::seconds(changed.tv_sec) -
                   std::chrono::nanoseconds(changed.tv_nsec);
  return std::chrono::abs(age) < (changed.tv_nsec == 0 ? 2s : 20ms);
}

bool sameTime(const std::timespec& a, const std::timespec& b) {
  return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

}  // namespace

bool forEachEntry(const std::string& folder, const std::function<void(const char* name)>& visit) {
  const std::unique_ptr<DIR, FolderCloser> open(::opendir(folder.c_str()));
  if (!open) {
    checkResources(folder);
    return false;
  }
  // The folder handle is this function's own, so no other thread reads from it.
  while (const dirent* entry = ::readdir(open.get())) {  // NOLINT(concurrency-mt-unsafe)
    visit(entry->d_name);
  }
  return true;
}

const PathFinder::Listing& PathFinder::listing(const std::string& folder) {
  auto [place, isNew] = listings_.try_emplace(folder);
  Listing& listing = place->second;
  if (listing.held) {
    return listing;
  }
  struct stat status {};
  const bool known = ::stat(folder.c_str(), &status) == 0;
  if (isNew || !known || !listing.settled || !sameTime(listing.changed, status.st_mtim)) {
    listing = {known ? status.st_mtim : std::timespec{}, known && !mayComeAgain(status.st_mtim), false, {}};
    forEachEntry(folder, [&](const char* name) { listing.names.emplace(upperCaseUtf8(name), name); });
  }
  return listing;
}

bool PathFinder::isCurrent(const std::string& folder) {
  const auto known = listings_.find(folder.empty() ? "." : folder);
  if (known == listings_.end() || known->second.held) {
    return known != listings_.end();
  }
  struct stat status {};
  return known->second.settled && ::stat(known->first.c_str(), &status) == 0 &&
         sameTime(known->second.changed, status.st_mtim);
}

PathFinder::HeldFolder::HeldFolder(PathFinder& finder, std::string folder)
    : finder_(finder), folder_(folder.empty() ? "." : std::move(folder)) {
  if (finder_.isCurrent(folder_)) {
    finder_.listings_[folder_].held = true;
  }
}

PathFinder::HeldFolder::~HeldFolder() {
  if (const auto known = finder_.listings_.find(folder_); known != finder_.listings_.end()) {
    known->second.held = false;
  }
}

void PathFinder::addToListing(const std::string& path) {
  const std::size_t nameAt = path.rfind(separator) + 1;
  const std::string folder = path.substr(0, nameAt);
  const std::string name = path.substr(nameAt);
  const auto known = listings_.find(folder.empty() ? "." : folder);
  struct stat status {};
  if (known == listings_.end() || ::stat(known->first.c_str(), &status) != 0) {
    return;
  }
  Listing& listing = known->second;
  const auto [first, last] = listing.names.equal_range(upperCaseUtf8(name));
  if (std::none_of(first, last, [&](const auto& entry) { return entry.second == name; })) {
    listing.names.emplace(upperCaseUtf8(name), name);
  }
  listing.changed = status.st_mtim;
  listing.settled = true;
}

std::vector<std::string> PathFinder::candidates(const std::string& folder, const std::string& component) {
  std::vector<std::string> others;
  const auto [first, last] = listing(folder.empty() ? "." : folder).names.equal_range(upperCaseUtf8(component));
  for (auto entry = first; entry != last; ++entry) {
    if (entry->second != component) {
      others.push_back(entry->second);
    }
  }
  std::sort(others.begin(), others.end());
  return others;
}

std::optional<PathFinder::Attempt> PathFinder::attemptIn(const std::string& folder, std::string_view rest) {
  struct stat status {};
  const bool isKnown = ::stat(folder.empty() ? "." : folder.c_str(), &status) == 0;
  return isKnown ? std::optional(Attempt{status.st_dev, status.st_ino, rest.size()}) : std::nullopt;
}

std::optional<std::string> PathFinder::find(const std::string& folder, std::string_view rest) {
  std::set<Attempt> failed;
  return find(folder, rest, failed);
}

std::optional<std::string> PathFinder::find(const std::string& folder, std::string_view rest,
                                            std::set<Attempt>& failed) {
  if (rest.empty()) {
    return folder;
  }
  const std::size_t end = std::min(rest.find(separator), rest.size());
  const std::string component(rest.substr(0, end));
  const std::string after = end < rest.size() ? std::string(1, separator) : "";
  const std::string_view remainder = rest.substr(std::min(end + 1, rest.size()));
  if (component.empty() || exists(folder + component)) {
    if (auto found = findOnce(folder + component + after, remainder, failed)) {
      return found;
    }
  }
  if (!component.empty()) {
    for (const std::string& other : candidates(folder, component)) {
      std::string next = folder;
      next += other;
      next += after;
      if (auto found = findOnce(next, remainder, failed)) {
        return found;
      }
    }
  }
  return std::nullopt;
}

std::optional<std::string> PathFinder::findOnce(const std::string& folder, std::string_view rest,
                                                std::set<Attempt>& failed) {
  if (!rest.empty() && !failed.empty()) {
    const auto attempt = attemptIn(folder, rest);
    if (attempt && failed.contains(*attempt)) {
      return std::nullopt;
    }
  }
  auto found = find(folder, rest, failed);
  if (!found) {
    if (const auto attempt = attemptIn(folder, rest)) {
      failed.insert(*attempt);
    }
  }
  return found;
}

std::optional<std::string> PathFinder::firstFolder(const std::string& folder) {
  const auto known = folders_.find(folder);
  if (known != folders_.end()) {
    return known->second;
  }
  auto found = find("", folder);
  if (found) {
    folders_.emplace(folder, *found);
  }
  return found;
}

std::string PathFinder::resolve(const std::string& name) {
  if (hasZeroByte(name)) {
    return "";
  }
  const Path path(name);
  if (name.size() > longestPath) {
    return path.folder + path.file;
  }
  if (usesExactFolders_ && isFolder(path.folder)) {
    return find(path.folder, path.file).value_or(path.folder + path.file);
  }
  // The search through all folders would look there first as well.
  if (const auto first = firstFolder(path.folder)) {
    if (const auto found = find(*first, path.file)) {
      return *found;
    }
  }
  if (const auto found = find("", path.folder + path.file)) {
    return *found;
  }
  // A file that is to be created: its folder exists, in whatever spelling.
  return find("", path.folder).value_or(path.folder) + path.file;
}

std::optional<std::string> PathFinder::likelyPath(const std::string& name) {
  const Path path(name);
  if (path.file.empty() || hasZeroByte(name) || name.size() > longestPath) {
    return std::nullopt;
  }
  const auto folder = firstFolder(path.folder);
  return folder ? std::optional(*folder + path.file) : std::nullopt;
}

void PathFinder::clear() {
  listings_.clear();
  folders_.clear();
}

}  // namespace kiv
