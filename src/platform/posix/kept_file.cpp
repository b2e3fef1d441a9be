#include "platform/kept_file.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/posix/own_files.h"
#include "platform/posix/posix_files.h"

namespace kiv {
namespace {

constexpr mode_t onlyForOwner = 0700;
constexpr std::size_t copyBytes = std::size_t{64} * 1024;

std::optional<std::string> failureUnless(bool done) {
  return done ? std::nullopt : std::optional(lastFailure());
}

std::optional<std::string> copyBytesOf(const Descriptor& from, const Descriptor& to) {
  std::vector<char> buffer(copyBytes);
  while (true) {
    const ssize_t got = ::read(from.number(), buffer.data(), buffer.size());
    if (got == 0) {
      return std::nullopt;
    }
    if (got < 0 && errno != EINTR) {
      return lastFailure();
    }
    if (got > 0) {
      if (auto failure = writeAll(to, {buffer.data(), static_cast<std::size_t>(got)})) {
        return failure;
      }
    }
  }
}

/// Gives a copy the owner, the mode and the times of its original, and waits until it is on the disk.
std::optional<std::string> finishCopy(const Descriptor& copy, const struct stat& original) {
  const timespec times[] = {original.st_atim, original.st_mtim};
  return failureUnless(takeOwnerAndMode(copy, original) && ::futimens(copy.number(), times) == 0 &&
                       ::fsync(copy.number()) == 0);
}

std::optional<std::string> copyFile(const std::string& path, const std::string& kept) {
  const Descriptor from(::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  struct stat status {};
  if (!from.isOpen() || ::fstat(from.number(), &status) != 0) {
    return lastFailure();
  }
  if (!S_ISREG(status.st_mode)) {
    return "Not a regular file";
  }
  const Descriptor to(::open(kept.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR));
  if (!to.isOpen()) {
    return lastFailure();
  }
  auto failure = copyBytesOf(from, to);
  failure = failure ? failure : finishCopy(to, status);
  if (failure) {
    ::unlink(kept.c_str());
  }
  return failure;
}

std::string resolved(const std::string& path) {
  char* const real = ::realpath(path.c_str(), nullptr);
  std::string text = real == nullptr ? "" : real;
  std::free(real);
  return text;
}

}  // namespace

EntryKind entryKindOf(const std::string& path) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) != 0) {
    return errno == ENOENT || errno == ENOTDIR ? EntryKind::missing : EntryKind::unknown;
  }
  if (S_ISLNK(status.st_mode)) {
    return EntryKind::link;
  }
  return S_ISREG(status.st_mode) ? EntryKind::file : EntryKind::other;
}

std::string linkTextOf(const std::string& path) {
  std::string text(PATH_MAX, '\0');
  const ssize_t length = ::readlink(path.c_str(), text.data(), text.size());
  text.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
  return text;
}

std::unique_ptr<InputFile> openExactly(const std::string& path) {
  return openForReading(path);
}

std::string realPath(const std::string& path) {
  std::string name = path;
  while (name.size() > 1 && name.ends_with('/')) {
    name.pop_back();
  }
  const std::size_t slash = name.rfind('/');
  const std::string folder = resolved(slash == std::string::npos ? "." : name.substr(0, slash + 1));
  const std::string last = name.substr(slash == std::string::npos ? 0 : slash + 1);
  if (folder.empty() || last.empty() || last == "." || last == "..") {
    return last.empty() ? folder : resolved(name);
  }
  return pathIn(folder, last);
}

std::string realFolder(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) ? resolved(path) : "";
}

bool isRealPath(const std::string& path) {
  const std::string closed = path + "/";
  return path.starts_with('/') && path.find('\0') == std::string::npos && closed.find("/../") == std::string::npos &&
         closed.find("/./") == std::string::npos && (path == "/" || closed.find("//") == std::string::npos);
}

std::string folderAbove(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == 0 ? "/" : path.substr(0, slash);
}

std::string pathIn(const std::string& folder, const std::string& name) {
  return folder + (folder.ends_with('/') ? "" : "/") + name;
}

std::string pathKey(const std::string& path) {
  return path;
}

std::optional<std::string> keepFile(const std::string& path, const std::string& kept) {
  return ::linkat(AT_FDCWD, path.c_str(), AT_FDCWD, kept.c_str(), 0) == 0 ? std::nullopt : keepCopy(path, kept);
}

std::optional<std::string> keepCopy(const std::string& path, const std::string& kept) {
  if (entryKindOf(path) == EntryKind::link) {
    return failureUnless(::symlink(linkTextOf(path).c_str(), kept.c_str()) == 0);
  }
  return copyFile(path, kept);
}

std::optional<std::string> moveOver(const std::string& from, const std::string& to) {
  return failureUnless(::rename(from.c_str(), to.c_str()) == 0);
}

std::optional<std::string> makeHiddenFolder(const std::string& path) {
  const bool isMade = ::mkdir(path.c_str(), onlyForOwner) == 0;
  const int failure = errno;
  if (isMade || (failure == EEXIST && !realFolder(path).empty() && entryKindOf(path) == EntryKind::other)) {
    return isMade ? flushFolder(folderAbove(path)) : std::nullopt;
  }
  errno = failure;
  return lastFailure();
}

std::optional<std::string> makePrivateFolders(const std::string& path) {
  for (std::size_t slash = path.find('/', 1);; slash = path.find('/', slash + 1)) {
    const std::string folder = path.substr(0, slash);
    if (::mkdir(folder.c_str(), onlyForOwner) != 0 && realFolder(folder).empty()) {
      return lastFailure();
    }
    if (slash == std::string::npos) {
      return std::nullopt;
    }
  }
}

std::optional<std::string> removeEntry(const std::string& path) {
  return failureUnless(::unlink(path.c_str()) == 0 || errno == ENOENT || errno == ENOTDIR);
}

void removeEmptyFolder(const std::string& path) {
  ::rmdir(path.c_str());
}

std::optional<std::string> flushFolderAt(const std::string& folder) {
  return flushFolder(folder);
}

std::string stateFolder() {
  const char* const state = std::getenv("XDG_STATE_HOME");
  if (state != nullptr && *state == '/') {
    return pathIn(state, "kivsys");
  }
  const char* const home = std::getenv("HOME");
  return home != nullptr && *home == '/' ? pathIn(home, ".local/state/kivsys") : "";
}

}  // namespace kiv
