#include "platform/locked_file.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/posix/posix_files.h"

namespace kiv {
namespace {

constexpr mode_t readableByAll = 0666;

/// A lock on the whole file, for one process.
struct flock wholeFile() {
  struct flock lock {};
  lock.l_type = F_WRLCK;
  lock.l_whence = SEEK_SET;
  return lock;
}

}  // namespace

struct LockedFile::State {
  std::optional<Descriptor> file{};
  bool isRegular = false;
  std::optional<std::uint64_t> holder{};
  std::string failure{};

  /// Keeps the words for a call that failed.
  bool note(bool done) {
    if (!done) {
      failure = lastFailure();
    }
    return done;
  }
};

LockedFile::LockedFile() : state_(new State) {}
LockedFile::~LockedFile() = default;

LockedFile::Outcome LockedFile::open(const std::string& name) {
  // Without O_NONBLOCK, opening a pipe would wait for the other end.
  state_->file.emplace(::open(name.c_str(), O_RDWR | O_CREAT | O_APPEND | O_CLOEXEC | O_NONBLOCK, readableByAll));
  struct stat status {};
  if (!state_->note(state_->file->isOpen() && ::fstat(state_->file->number(), &status) == 0)) {
    return Outcome::failed;
  }
  state_->isRegular = S_ISREG(status.st_mode);
  if (!state_->isRegular) {
    return Outcome::open;
  }
  struct flock lock = wholeFile();
  if (::fcntl(state_->file->number(), F_SETLK, &lock) == 0) {
    return Outcome::open;
  }
  if (!state_->note(errno == EACCES || errno == EAGAIN)) {
    return Outcome::failed;
  }
  lock = wholeFile();
  if (::fcntl(state_->file->number(), F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK && lock.l_pid > 0) {
    state_->holder = static_cast<std::uint64_t>(lock.l_pid);
  }
  return Outcome::busy;
}

std::optional<std::uint64_t> LockedFile::holder() const {
  return state_->holder;
}

const std::string& LockedFile::failure() const {
  return state_->failure;
}

std::uint64_t LockedFile::size() const {
  struct stat status {};
  const bool known = state_->isRegular && ::fstat(state_->file->number(), &status) == 0;
  return known ? static_cast<std::uint64_t>(status.st_size) : 0;
}

std::optional<std::string> LockedFile::read() {
  std::string content(static_cast<std::size_t>(size()), '\0');
  std::size_t have = 0;
  while (have < content.size()) {
    const ssize_t got =
        ::pread(state_->file->number(), content.data() + have, content.size() - have, static_cast<off_t>(have));
    if (got == 0) {
      content.resize(have);
    } else if (got > 0) {
      have += static_cast<std::size_t>(got);
    } else if (errno != EINTR) {
      state_->note(false);
      return std::nullopt;
    }
  }
  return content;
}

bool LockedFile::replaceEnd(std::uint64_t kept, std::string_view bytes) {
  const bool cut =
      !state_->isRegular || kept == size() || ::ftruncate(state_->file->number(), static_cast<off_t>(kept)) == 0;
  return state_->note(cut) && append(bytes);
}

bool LockedFile::append(std::string_view bytes) {
  if (const auto failure = writeAll(*state_->file, bytes)) {
    state_->failure = *failure;
    return false;
  }
  return true;
}

bool LockedFile::flush() {
  return state_->note(!state_->isRegular || ::fsync(state_->file->number()) == 0);
}

}  // namespace kiv
