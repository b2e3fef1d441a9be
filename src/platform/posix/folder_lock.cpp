#include "platform/folder_lock.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include "platform/posix/lock_holder.h"
#include "platform/posix/posix_files.h"

namespace kiv {
struct FolderLock::State {
  Descriptor folder{-1};
  FolderIdentity identity{};
  bool exists = false;
  std::string failure{};
};

FolderLock::FolderLock(const std::string& folder)
    : state_(new State{Descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))}) {
  state_->exists = state_->folder.isOpen() || (errno != ENOENT && errno != ENOTDIR);
  struct stat status {};
  if (!state_->folder.isOpen() || ::fstat(state_->folder.number(), &status) != 0) {
    state_->failure = lastFailure();
    return;
  }
  state_->identity = {status.st_dev, status.st_ino};
}

FolderLock::FolderLock(FolderLock&& other) noexcept = default;
FolderLock& FolderLock::operator=(FolderLock&& other) noexcept = default;
FolderLock::~FolderLock() = default;

bool FolderLock::exists() const {
  return state_->exists;
}

FolderIdentity FolderLock::identity() const {
  return state_->identity;
}

const std::string& FolderLock::failure() const {
  return state_->failure;
}

FolderLock::Outcome FolderLock::tryLock() {
  if (!state_->folder.isOpen()) {
    return Outcome::refused;
  }
  if (::flock(state_->folder.number(), LOCK_EX | LOCK_NB) == 0) {
    return Outcome::locked;
  }
  if (errno == EWOULDBLOCK || errno == EINTR) {
    return Outcome::busy;
  }
  state_->failure = lastFailure();
  return Outcome::refused;
}

std::optional<std::uint64_t> FolderLock::holder() const {
  return lockHolder(state_->identity.volume, state_->identity.number);
}

}  // namespace kiv
