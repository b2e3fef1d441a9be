#include "platform/locked_file.h"

#include <algorithm>

#include "platform/win32/handle.h"
#include "platform/win32/text.h"
#include "platform/win32/win32_files.h"

namespace kiv {

struct LockedFile::State {
  Handle file{};
  bool isRegular = false;
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
  constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  state_->file = Handle(CreateFileA(name.c_str(), GENERIC_READ | GENERIC_WRITE, shareAll, nullptr, OPEN_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!state_->note(state_->file.isOpen())) {
    return Outcome::failed;
  }
  state_->isRegular = GetFileType(state_->file.get()) == FILE_TYPE_DISK;
  if (!state_->isRegular) {
    return Outcome::open;
  }
  // Nobody else may touch locked bytes, so the lock is on one beyond all that a file can have.
  OVERLAPPED position{};
  position.OffsetHigh = 0x7FFFFFFF;
  if (LockFileEx(state_->file.get(), LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &position) !=
      FALSE) {
    return Outcome::open;
  }
  const DWORD error = GetLastError();
  return state_->note(error == ERROR_LOCK_VIOLATION || error == ERROR_IO_PENDING) ? Outcome::busy : Outcome::failed;
}

std::optional<std::uint64_t> LockedFile::holder() const {
  return std::nullopt;  // the system does not say
}

const std::string& LockedFile::failure() const {
  return state_->failure;
}

std::uint64_t LockedFile::size() const {
  LARGE_INTEGER size{};
  const bool known = state_->isRegular && GetFileSizeEx(state_->file.get(), &size) != FALSE;
  return known ? static_cast<std::uint64_t>(size.QuadPart) : 0;
}

std::optional<std::string> LockedFile::read() {
  constexpr std::size_t longestTransfer = 1U << 30U;
  std::string content(static_cast<std::size_t>(size()), '\0');
  std::size_t have = 0;
  if (!state_->note(SetFilePointerEx(state_->file.get(), LARGE_INTEGER{}, nullptr, FILE_BEGIN) != FALSE)) {
    return std::nullopt;
  }
  while (have < content.size()) {
    DWORD got = 0;
    const auto wanted = static_cast<DWORD>(std::min(content.size() - have, longestTransfer));
    if (!state_->note(ReadFile(state_->file.get(), content.data() + have, wanted, &got, nullptr) != FALSE)) {
      return std::nullopt;
    }
    have += got;
    if (got == 0) {
      content.resize(have);
    }
  }
  return content;
}

bool LockedFile::replaceEnd(std::uint64_t kept, std::string_view bytes) {
  LARGE_INTEGER end{};
  end.QuadPart = static_cast<LONGLONG>(kept);
  const bool cut = !state_->isRegular || kept == size() ||
                   (SetFilePointerEx(state_->file.get(), end, nullptr, FILE_BEGIN) != FALSE &&
                    SetEndOfFile(state_->file.get()) != FALSE);
  return state_->note(cut) && append(bytes);
}

bool LockedFile::append(std::string_view bytes) {
  const bool atEnd =
      !state_->isRegular || SetFilePointerEx(state_->file.get(), LARGE_INTEGER{}, nullptr, FILE_END) != FALSE;
  if (!state_->note(atEnd)) {
    return false;
  }
  if (const auto failure = writeAll(state_->file, bytes)) {
    state_->failure = *failure;
    return false;
  }
  return true;
}

bool LockedFile::flush() {
  return state_->note(!state_->isRegular || FlushFileBuffers(state_->file.get()) != FALSE);
}

}  // namespace kiv
