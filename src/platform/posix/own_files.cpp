#include "platform/posix/own_files.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <pthread.h>
#include <unistd.h>

namespace kiv {
namespace {

constexpr std::array heldSignals{SIGINT, SIGTERM, SIGHUP};

/// Whether writing the file changes what this name stands for and nothing else.
bool isOnlyHere(const struct stat& status) {
  return S_ISREG(status.st_mode) && status.st_nlink == 1;
}

/// What gives way to a file of the program's own. Folders and devices do not.
bool mayGiveWay(const struct stat& status) {
  return S_ISLNK(status.st_mode) || S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode) || S_ISREG(status.st_mode);
}

/// The old file of this name, empty.
Descriptor openOld(const std::string& path) {
  // Without O_NONBLOCK, a pipe that has just taken the name would be waited for.
  Descriptor file(::open(path.c_str(), O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  struct stat status {};
  const bool good =
      file.isOpen() && ::fstat(file.number(), &status) == 0 && isOnlyHere(status) && ::ftruncate(file.number(), 0) == 0;
  return good ? std::move(file) : Descriptor(-1);
}

Descriptor openNew(const std::string& path) {
  return Descriptor(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, readableByAll));
}

}  // namespace

SignalsHeld::SignalsHeld() {
  sigset_t held;
  ::sigemptyset(&held);
  for (const int signal : heldSignals) {
    ::sigaddset(&held, signal);
  }
  ::pthread_sigmask(SIG_BLOCK, &held, &before_);
}

SignalsHeld::~SignalsHeld() {
  ::pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}

bool SignalsHeld::areSomeWaiting() {
  sigset_t waiting;
  return ::sigpending(&waiting) == 0 && std::any_of(heldSignals.begin(), heldSignals.end(),
                                                    [&](int signal) { return ::sigismember(&waiting, signal) == 1; });
}

std::unique_ptr<OutputFile> openOwnForWriting(const std::string& path) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) == 0) {
    if (isOnlyHere(status)) {
      return asOutput(openOld(path));
    }
    if (!mayGiveWay(status) || ::unlink(path.c_str()) != 0) {
      return nullptr;
    }
  }
  return asOutput(openNew(path));
}

bool takeOwnerAndMode(const Descriptor& file, const struct stat& old) {
  constexpr mode_t permissions = 0777;
  constexpr auto sameOwner = static_cast<uid_t>(-1);
  // Who may not give files away may still give them to a group.
  if (::fchown(file.number(), old.st_uid, old.st_gid) != 0) {
    static_cast<void>(::fchown(file.number(), sameOwner, old.st_gid) == 0);
  }
  return ::fchmod(file.number(), old.st_mode & permissions) == 0;
}

std::optional<std::string> moveToFreePath(const std::string& from, const std::string& to) {
#ifdef RENAME_NOREPLACE  // not every system has it, nor every disk of one that has
  if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
    return std::nullopt;
  }
  if (errno != EINVAL && errno != ENOSYS) {
    return lastFailure();
  }
#endif
  if (::linkat(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), 0) == 0) {
    ::unlink(from.c_str());
    return std::nullopt;
  }
  if (errno != EPERM && errno != ENOTSUP) {
    return lastFailure();
  }
  // A disk without second names cannot do both in one step.
  struct stat status {};
  if (::lstat(to.c_str(), &status) == 0) {
    return std::make_error_code(std::errc::file_exists).message();
  }
  return ::rename(from.c_str(), to.c_str()) == 0 ? std::nullopt : std::optional(lastFailure());
}

std::optional<std::string> flushFolder(const std::string& folder) {
  const Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!opened.isOpen()) {
    return errno == EACCES ? std::nullopt : std::optional(lastFailure());  // files can be put where none can be listed
  }
  const bool done = ::fsync(opened.number()) == 0 || errno == EINVAL || errno == ENOTSUP;
  return done ? std::nullopt : std::optional(lastFailure());
}

}  // namespace kiv
