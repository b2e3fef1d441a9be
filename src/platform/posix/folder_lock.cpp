#include "platform/folder_lock.h"

#include <cerrno>
#include <charconv>
#include <fstream>
#include <sstream>
#include <string_view>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include "platform/posix/posix_files.h"

namespace kiv {
namespace {

/// The last number in a field like "08:01:1234".
std::uint64_t fileNumberIn(std::string_view field) {
  std::uint64_t number = 0;
  const std::string_view digits = field.substr(field.rfind(':') + 1);
  std::from_chars(digits.data(), digits.data() + digits.size(), number);
  return number;
}

/// The process in a line of /proc/locks about a lock on the file: "1: FLOCK  ADVISORY  WRITE 4711 08:01:1234 0
/// EOF". Those who wait for one have an arrow before the kind.
std::optional<std::uint64_t> processIn(const std::string& line, std::uint64_t fileNumber) {
  std::istringstream fields(line);
  std::string order;
  std::string kind;
  std::string rule;
  std::string access;
  long long process = 0;
  std::string file;
  fields >> order >> kind >> rule >> access >> process >> file;
  const bool isHeld = fields && kind == "FLOCK" && process > 0;  // processes out of sight have none
  return isHeld && fileNumberIn(file) == fileNumber ? std::optional(static_cast<std::uint64_t>(process)) : std::nullopt;
}

}  // namespace

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
  std::ifstream locks("/proc/locks");
  for (std::string line; std::getline(locks, line);) {
    if (const auto process = processIn(line, state_->identity.number)) {
      return process;
    }
  }
  return std::nullopt;
}

}  // namespace kiv
