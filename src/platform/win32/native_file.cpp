#include "platform/native_file.h"

#include "platform/win32/handle.h"
#include "platform/win32/text.h"
#include "platform/win32/win32_files.h"

namespace kiv {
namespace {

constexpr DWORD sharedByAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// Open for questions only, or for reading; folders too.
Handle openAs(const std::string& path, DWORD access) {
  return Handle(
      CreateFileA(path.c_str(), access, sharedByAll, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
}

bool isFolder(const std::string& path) {
  const DWORD attributes = GetFileAttributesA(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

}  // namespace

std::optional<FileIdentity> identityOfStandardInput() {
  HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
  const auto stamp = GetFileType(input) == FILE_TYPE_DISK ? stampOfHandle(input) : std::nullopt;
  return stamp ? std::optional(stamp->identity) : std::nullopt;
}

std::optional<FileIdentity> identityOf(const std::string& path) {
  const auto stamp = stampOf(path);
  return stamp ? std::optional(stamp->identity) : std::nullopt;
}

std::optional<FileStamp> stampOf(const std::string& path) {
  const Handle file = openAs(path, 0);
  return file.isOpen() ? stampOfHandle(file.get()) : std::nullopt;
}

PathKind kindOf(const std::string& path) {
  if (isFolder(path)) {
    return PathKind::folder;
  }
  const Handle file = openAs(path, 0);
  if (!file.isOpen()) {
    return GetFileAttributesA(path.c_str()) == INVALID_FILE_ATTRIBUTES ? PathKind::missing : PathKind::file;
  }
  return GetFileType(file.get()) == FILE_TYPE_DISK ? PathKind::file : PathKind::device;
}

ReadCheck checkReadable(const std::string& path, Fetch /*fetch*/) {
  if (isFolder(path)) {
    return {"Is a folder", std::nullopt};
  }
  const Handle file = openAs(path, GENERIC_READ);
  if (!file.isOpen()) {
    return {lastFailure(), std::nullopt};
  }
  if (GetFileType(file.get()) != FILE_TYPE_DISK) {
    return {"Not a file on a disk", std::nullopt};
  }
  return {std::nullopt, stampOfHandle(file.get())};
}

std::optional<std::string> writeFailure(const std::string& path) {
  return openAs(path, GENERIC_WRITE).isOpen() ? std::nullopt : std::optional(lastFailure());
}

std::optional<std::string> listFailure(const std::string& folder) {
  return openAs(folder, FILE_LIST_DIRECTORY).isOpen() ? std::nullopt : std::optional(lastFailure());
}

std::string lastCallFailure() {
  return GetLastError() == ERROR_SUCCESS ? "" : lastFailure();
}

std::optional<std::uint64_t> freeBytes(const std::string& folder) {
  ULARGE_INTEGER bytes{};
  return GetDiskFreeSpaceExA(folder.c_str(), &bytes, nullptr, nullptr) != FALSE ? std::optional(bytes.QuadPart)
                                                                                : std::nullopt;
}

std::optional<std::string> makeFolder(const std::string& path) {
  return CreateDirectoryA(path.c_str(), nullptr) != FALSE ? std::nullopt : std::optional(lastFailure());
}

}  // namespace kiv
