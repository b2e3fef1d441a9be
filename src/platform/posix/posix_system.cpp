#include "platform/posix/posix_system.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <new>
#include <system_error>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/posix/posix_files.h"
#include "platform/posix/utf8.h"

namespace kiv {
namespace {

constexpr char separator = '/';

std::string swapped(std::string text, char from, char to) {
  std::replace(text.begin(), text.end(), from, to);
  return text;
}

/// The system would take what stands before such a byte for the name.
bool hasZeroByte(const std::string& name) {
  return name.find('\0') != std::string::npos;
}

/// A name of the core, with the signs between folders that the disk has.
struct Path {
  explicit Path(const std::string& name)
      : file(swapped(name, '\\', separator)), folder(file.substr(0, file.rfind(separator) + 1)) {
    file.erase(0, folder.size());
  }

  std::string file;
  std::string folder;  ///< with its separator; "" when the name has none
};

bool exists(const std::string& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0;
}

/// Want of memory is no property of a file, and must not pass for one.
void checkMemory(const std::error_code& failure) {
  if (failure == std::errc::not_enough_memory) {
    throw std::bad_alloc();
  }
}

/// The file that a link leads to, so that replacing it leaves the link; the path itself when it leads nowhere.
std::string behindLinks(const std::string& path) {
  std::error_code failure;
  const auto target = std::filesystem::canonical(path, failure);
  checkMemory(failure);
  return failure ? path : target.string();
}

mode_t modeOfNewFiles() {
  constexpr mode_t readableByAll = 0666;
  const mode_t withheld = ::umask(0);
  ::umask(withheld);
  return readableByAll & ~withheld;
}

struct FolderCloser {
  void operator()(DIR* folder) const { ::closedir(folder); }
};

template <typename Take>
void forEachEntry(const std::string& folder, Take take) {
  const std::unique_ptr<DIR, FolderCloser> open(::opendir(folder.c_str()));
  if (!open) {
    checkMemory({errno, std::generic_category()});
    return;
  }
  // The folder handle is this function's own, so no other thread reads from it.
  while (const dirent* entry = ::readdir(open.get())) {  // NOLINT(concurrency-mt-unsafe)
    take(*entry);
  }
}

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

PosixSystem::PosixSystem() = default;

const PosixSystem::Listing& PosixSystem::listing(const std::string& folder) {
  struct stat status {};
  const bool known = ::stat(folder.c_str(), &status) == 0;
  auto [place, isNew] = listings_.try_emplace(folder);
  Listing& listing = place->second;
  if (isNew || !known || !listing.settled || !sameTime(listing.changed, status.st_mtim)) {
    listing = {known ? status.st_mtim : std::timespec{}, known && !mayComeAgain(status.st_mtim), {}};
    forEachEntry(folder,
                 [&](const dirent& entry) { listing.names.emplace(upperCaseUtf8(entry.d_name), entry.d_name); });
  }
  return listing;
}

bool PosixSystem::isCurrent(const std::string& folder) {
  const auto known = listings_.find(folder.empty() ? "." : folder);
  struct stat status {};
  return known != listings_.end() && known->second.settled && ::stat(known->first.c_str(), &status) == 0 &&
         sameTime(known->second.changed, status.st_mtim);
}

void PosixSystem::takeNote(const std::string& target) {
  const std::size_t nameAt = target.rfind(separator) + 1;
  const std::string folder = target.substr(0, nameAt);
  const std::string name = target.substr(nameAt);
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

std::vector<std::string> PosixSystem::candidates(const std::string& folder, const std::string& component) {
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

std::optional<std::string> PosixSystem::find(const std::string& folder, std::string_view rest) {
  if (rest.empty()) {
    return folder;
  }
  const std::size_t end = std::min(rest.find(separator), rest.size());
  const std::string component(rest.substr(0, end));
  const std::string behind = end < rest.size() ? std::string(1, separator) : "";
  rest.remove_prefix(std::min(end + 1, rest.size()));
  if (component.empty() || exists(folder + component)) {
    if (auto found = find(folder + component + behind, rest)) {
      return found;
    }
  }
  if (!component.empty()) {
    for (const std::string& other : candidates(folder, component)) {
      std::string next = folder;
      next += other;
      next += behind;
      if (auto found = find(next, rest)) {
        return found;
      }
    }
  }
  return std::nullopt;
}

std::optional<std::string> PosixSystem::firstFolder(const std::string& folder) {
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

std::string PosixSystem::resolve(const std::string& name) {
  if (hasZeroByte(name)) {
    return "";
  }
  const Path path(name);
  // The search through all folders would look there first, too.
  if (const auto first = firstFolder(path.folder)) {
    if (const auto found = find(*first, path.file)) {
      return *found;
    }
  }
  if (const auto found = find("", path.folder + path.file)) {
    return *found;
  }
  // A file that is to be made: its folder is there, under whatever spelling.
  return find("", path.folder).value_or(path.folder) + path.file;
}

std::unique_ptr<InputFile> PosixSystem::openInput(const std::string& name) {
  const Path path(name);
  // Most names are those of the disk, which is then asked nothing else.
  if (!path.file.empty() && !hasZeroByte(name)) {
    if (const auto folder = firstFolder(path.folder)) {
      auto file = openForReading(*folder + path.file);
      if (file || (errno != ENOENT && errno != ENOTDIR)) {
        return file;
      }
    }
  }
  return openForReading(resolve(name));
}

std::unique_ptr<OutputFile> PosixSystem::openOutput(const std::string& name) {
  return openForWriting(resolve(name));
}

std::optional<std::string> PosixSystem::replaceFile(const std::string& name, std::string_view bytes) {
  const std::string target = behindLinks(resolve(name));
  const bool folderIsKnown = isCurrent(target.substr(0, target.rfind(separator) + 1));
  std::string beside = target.substr(0, target.rfind(separator) + 1) + ".kiv-XXXXXX";
  const Descriptor file(::mkstemp(beside.data()));
  if (!file.isOpen()) {
    return lastFailure();
  }
  struct stat old {};
  const mode_t mode = ::stat(target.c_str(), &old) == 0 ? old.st_mode : modeOfNewFiles();
  auto failure = writeAll(file, bytes);
  if (!failure && (::fchmod(file.number(), mode) != 0 || ::fsync(file.number()) != 0 ||
                   ::rename(beside.c_str(), target.c_str()) != 0)) {
    failure = lastFailure();
  }
  if (failure) {
    ::unlink(beside.c_str());
  } else if (folderIsKnown) {
    takeNote(target);
  }
  return failure;
}

bool PosixSystem::deleteFile(const std::string& name) {
  return ::unlink(resolve(name).c_str()) == 0;
}

std::vector<FolderEntry> PosixSystem::listFolder(const std::string& folder) {
  std::vector<FolderEntry> entries;
  const std::string path = resolve(folder);
  forEachEntry(path, [&](const dirent& entry) {
    struct stat status {};
    const bool isFolder = ::stat((path + entry.d_name).c_str(), &status) == 0 && S_ISDIR(status.st_mode);
    entries.push_back({entry.d_name, isFolder});
  });
  return entries;
}

std::string PosixSystem::currentFolder() {
  std::error_code failure;
  const auto path = std::filesystem::current_path(failure);
  checkMemory(failure);
  return coreName(path.string());
}

std::optional<std::string> PosixSystem::shortName(const std::string& /*path*/) {
  return std::nullopt;
}

LocalTime PosixSystem::now() {
  const std::time_t seconds = std::time(nullptr);
  std::tm local{};
  ::localtime_r(&seconds, &local);
  return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec};
}

std::string PosixSystem::upperCase(std::string_view text) {
  return upperCaseUtf8(text);
}

std::size_t PosixSystem::characterCount(std::string_view text) {
  return characterCountUtf8(text);
}

std::string PosixSystem::profileKey(const std::string& /*key*/) {
  return "";
}

std::int32_t PosixSystem::runProcess(const std::string& /*commandLine*/, ShowState /*show*/) {
  return -1;
}

std::optional<ShellFailure> PosixSystem::runInShell(const std::string& /*command*/, WindowStyle /*style*/) {
  constexpr std::int32_t cannotMakeObject = 429;
  return ShellFailure{cannotMakeObject, "The scripting shell is not available"};
}

bool PosixSystem::enterFolder(const std::string& typed) {
  std::error_code failure;
  std::filesystem::current_path(typed, failure);
  listings_.clear();  // relative folders are others now
  folders_.clear();
  return !failure;
}

std::string PosixSystem::fullName(const std::string& typed) {
  std::error_code failure;
  const auto path = std::filesystem::absolute(typed, failure);
  checkMemory(failure);
  return coreName(path.lexically_normal().string());
}

std::string PosixSystem::coreName(const std::string& typed) {
  return swapped(typed, separator, '\\');
}

std::string PosixSystem::makeTemporaryFile(std::string_view content) {
  std::error_code failure;
  std::string path = (std::filesystem::temp_directory_path(failure) / "kivsys-XXXXXX").string();
  const Descriptor file(failure ? -1 : ::mkstemp(path.data()));
  if (!file.isOpen()) {
    return "";
  }
  if (writeAll(file, content)) {
    ::unlink(path.c_str());
    return "";
  }
  return coreName(path);
}

void PosixSystem::writeError(std::string_view text) {
  // Where standard error fails there is nobody left to tell.
  static_cast<void>(std::fwrite(text.data(), 1, text.size(), stderr));
  static_cast<void>(std::fflush(stderr));
}

bool PosixSystem::errorIsTerminal() {
  return ::isatty(STDERR_FILENO) != 0;
}

bool PosixSystem::inputIsTerminal() {
  return ::isatty(STDIN_FILENO) != 0;
}

bool PosixSystem::outputTakesColour() {
  const char* none = std::getenv("NO_COLOR");
  const char* terminal = std::getenv("TERM");
  const bool plain = terminal != nullptr && std::string_view(terminal) == "dumb";
  return ::isatty(STDOUT_FILENO) != 0 && !plain && (none == nullptr || *none == '\0');
}

std::size_t PosixSystem::outputColumns() {
  winsize size{};
  return ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

}  // namespace kiv
