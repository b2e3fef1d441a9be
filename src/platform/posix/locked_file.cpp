#include "platform/locked_file.h"

#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/posix/lock_holder.h"
#include "platform/posix/own_files.h"
#include "platform/posix/posix_files.h"

namespace kiv {
struct LockedFile::State {
  std::optional<Descriptor> file{};
  bool isRegular = false;
  std::string newIn{};  // the folder that has the file since it was opened, and may not be on the disk
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
  struct stat old {};
  if (::stat(name.c_str(), &old) != 0) {
    const std::size_t slash = name.rfind('/');
    state_->newIn = slash == std::string::npos ? "." : name.substr(0, slash + 1);
  }
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
  // A lock of this kind stays when the process closes another descriptor of the file.
  if (::flock(state_->file->number(), LOCK_EX | LOCK_NB) == 0) {
    return Outcome::open;
  }
  if (!state_->note(errno == EWOULDBLOCK)) {
    return Outcome::failed;
  }
  state_->holder = lockHolder(status.st_dev, status.st_ino);
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
  if (!state_->note(!state_->isRegular || ::fsync(state_->file->number()) == 0)) {
    return false;
  }
  if (const std::string folder = std::exchange(state_->newIn, ""); !folder.empty()) {
    const auto failure = flushFolder(folder);
    state_->failure = failure.value_or(state_->failure);
    return !failure;
  }
  return true;
}

}  // namespace kiv
