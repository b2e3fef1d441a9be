#include "platform/folder_lock.h"

#include <array>
#include <cstdio>

#include "platform/win32/handle.h"
#include "platform/win32/text.h"

namespace kiv {
namespace {

/// The objects' names are seen by all users of the machine, who may all ask for the lock.
class ForEverybody {
 public:
  ForEverybody() {
    InitializeSecurityDescriptor(&descriptor_, SECURITY_DESCRIPTOR_REVISION);
    SetSecurityDescriptorDacl(&descriptor_, TRUE, nullptr, FALSE);
    attributes_ = {sizeof attributes_, &descriptor_, FALSE};
  }
  SECURITY_ATTRIBUTES* get() { return &attributes_; }

 private:
  SECURITY_DESCRIPTOR descriptor_{};
  SECURITY_ATTRIBUTES attributes_{};
};

std::string nameOf(const FolderIdentity& folder, const char* kind) {
  std::array<char, 80> name{};
  static_cast<void>(std::snprintf(name.data(), name.size(), "KivSystem-folder-%s-%08lx-%016llx", kind,
                                  static_cast<unsigned long>(folder.volume),
                                  static_cast<unsigned long long>(folder.number)));
  return name.data();
}

/// The process number in a mapping of that size; null when it cannot be reached.
class SharedNumber {
 public:
  explicit SharedNumber(const Handle& mapping)
      : view_(mapping.isOpen() ? MapViewOfFile(mapping.get(), FILE_MAP_WRITE, 0, 0, sizeof(DWORD)) : nullptr) {}
  SharedNumber(const SharedNumber&) = delete;
  SharedNumber& operator=(const SharedNumber&) = delete;
  ~SharedNumber() {
    if (view_ != nullptr) {
      UnmapViewOfFile(view_);
    }
  }

  volatile DWORD* get() const { return static_cast<volatile DWORD*>(view_); }

 private:
  void* view_;
};

}  // namespace

struct FolderLock::State {
  FolderIdentity identity{};
  bool exists = false;
  bool isLocked = false;
  std::string failure{};
  Handle mutex{};
  Handle process{};  // a mapping with the process number of the holder

  State() = default;
  State(const State&) = delete;
  State& operator=(const State&) = delete;
  ~State() {
    if (isLocked) {
      ReleaseMutex(mutex.get());
    }
  }
};

FolderLock::FolderLock(const std::string& folder) : state_(new State) {
  constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const Handle opened(
      CreateFileA(folder.c_str(), 0, shareAll, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
  const DWORD error = GetLastError();
  state_->exists =
      opened.isOpen() || (error != ERROR_FILE_NOT_FOUND && error != ERROR_PATH_NOT_FOUND && error != ERROR_DIRECTORY);
  BY_HANDLE_FILE_INFORMATION about{};
  if (!opened.isOpen() || GetFileInformationByHandle(opened.get(), &about) == FALSE) {
    state_->failure = lastFailure();
    return;
  }
  constexpr unsigned halfWidth = 32;
  state_->identity = {about.dwVolumeSerialNumber,
                      (std::uint64_t{about.nFileIndexHigh} << halfWidth) | about.nFileIndexLow};
  ForEverybody everybody;
  state_->mutex = Handle(CreateMutexA(everybody.get(), FALSE, ("Global\\" + nameOf(state_->identity, "lock")).c_str()));
  if (!state_->mutex.isOpen()) {
    state_->failure = lastFailure();
    return;
  }
  // Not all users may make global mappings; the number is only for a message.
  state_->process = Handle(CreateFileMappingA(INVALID_HANDLE_VALUE, everybody.get(), PAGE_READWRITE, 0, sizeof(DWORD),
                                              ("Local\\" + nameOf(state_->identity, "process")).c_str()));
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
  if (!state_->mutex.isOpen()) {
    return Outcome::refused;
  }
  switch (WaitForSingleObject(state_->mutex.get(), 0)) {
    case WAIT_OBJECT_0:
    case WAIT_ABANDONED:  // the process that held it was killed
      state_->isLocked = true;
      break;
    case WAIT_TIMEOUT:
      return Outcome::busy;
    default:
      state_->failure = lastFailure();
      return Outcome::refused;
  }
  if (const SharedNumber number(state_->process); number.get() != nullptr) {
    *number.get() = GetCurrentProcessId();
  }
  return Outcome::locked;
}

std::optional<std::uint64_t> FolderLock::holder() const {
  const SharedNumber number(state_->process);
  return number.get() == nullptr || *number.get() == 0 ? std::nullopt : std::optional<std::uint64_t>(*number.get());
}

}  // namespace kiv
