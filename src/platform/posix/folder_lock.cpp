#include "platform/folder_lock.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <fstream>
#include <sstream>
#include <string_view>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include "platform/posix/posix_files.h"

namespace kiv {
namespace {

/// The number that a field like "08:01:1234" has up to its next colon, which is removed with it.
std::uint64_t takeNumber(std::string_view& field, int base) {
  std::uint64_t number = 0;
  const std::string_view digits = field.substr(0, field.find(':'));
  std::from_chars(digits.data(), digits.data() + digits.size(), number, base);
  field.remove_prefix(std::min(digits.size() + 1, field.size()));
  return number;
}

/// The file in such a field: device, of hexadecimal digits, and number.
FolderIdentity fileIn(std::string_view field) {
  constexpr int hexadecimal = 16;
  constexpr int decimal = 10;
  const auto major = static_cast<unsigned>(takeNumber(field, hexadecimal));
  const auto minor = static_cast<unsigned>(takeNumber(field, hexadecimal));
  return {makedev(major, minor), takeNumber(field, decimal)};
}

/// The process in a line of /proc/locks about a lock on the file: "1: FLOCK  ADVISORY  WRITE 4711 08:01:1234 0
/// EOF". Those who wait for one have an arrow before the kind.
std::optional<std::uint64_t> processIn(const std::string& line, const FolderIdentity& folder) {
  std::istringstream fields(line);
  std::string order;
  std::string kind;
  std::string rule;
  std::string access;
  long long process = 0;
  std::string file;
  fields >> order >> kind >> rule >> access >> process >> file;
  const bool isHeld = fields && kind == "FLOCK" && process > 0;  // processes out of sight have none
  return isHeld && fileIn(file) == folder ? std::optional(static_cast<std::uint64_t>(process)) : std::nullopt;
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
    if (const auto process = processIn(line, state_->identity)) {
      return process;
    }
  }
  return std::nullopt;
}

}  // namespace kiv
