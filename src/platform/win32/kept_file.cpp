#include "platform/kept_file.h"

#include <array>
#include <cstdlib>

#include "platform/native_file.h"
#include "platform/win32/text.h"
#include "platform/win32/win32_files.h"

namespace kiv {
namespace {

std::optional<std::string> failureUnless(bool done) {
  return done ? std::nullopt : std::optional(lastFailure());
}

bool isMissing(DWORD error) {
  return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}

std::string fullPath(const std::string& path) {
  const DWORD size = GetFullPathNameA(path.c_str(), 0, nullptr, nullptr);
  std::string full(size, '\0');
  full.resize(size == 0 ? 0 : GetFullPathNameA(path.c_str(), size, full.data(), nullptr));
  return full;
}

}  // namespace

EntryKind entryKindOf(const std::string& path) {
  const DWORD attributes = GetFileAttributesA(path.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) {
    return isMissing(GetLastError()) ? EntryKind::missing : EntryKind::unknown;
  }
  if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
    return EntryKind::other;
  }
  return kindOf(path) == PathKind::device ? EntryKind::other : EntryKind::file;
}

std::string linkTextOf(const std::string& /*path*/) {
  return "";
}

std::unique_ptr<InputFile> openExactly(const std::string& path) {
  return openForReading(path);
}

std::string realPath(const std::string& path) {
  const std::string full = fullPath(path);
  return full.empty() || kindOf(folderAbove(full)) != PathKind::folder ? "" : full;
}

std::string realFolder(const std::string& path) {
  std::string full = kindOf(path) == PathKind::folder ? fullPath(path) : "";
  while (full.size() > 1 && folderLength(full) == full.size() && !full.ends_with(":\\")) {
    full.pop_back();
  }
  return full;
}

bool isRealPath(const std::string& path) {
  return path.find('\0') == std::string::npos && path.size() > 2 && fullPath(path) == path;
}

std::string folderAbove(const std::string& path) {
  const std::size_t length = folderLength(path);
  constexpr std::size_t rootLength = 3;  // "C:\"
  return path.substr(0, length > rootLength ? length - 1 : length);
}

std::string pathIn(const std::string& folder, const std::string& name) {
  return folder + (folderLength(folder) == folder.size() ? "" : "\\") + name;
}

std::string pathKey(const std::string& path) {
  std::string key = path;
  CharUpperBuffA(key.data(), static_cast<DWORD>(key.size()));
  return key;
}

std::optional<std::string> keepFile(const std::string& path, const std::string& kept) {
  return CreateHardLinkA(kept.c_str(), path.c_str(), nullptr) != FALSE ? std::nullopt : keepCopy(path, kept);
}

std::optional<std::string> keepCopy(const std::string& path, const std::string& kept) {
  return failureUnless(CopyFileA(path.c_str(), kept.c_str(), TRUE) != FALSE);
}

std::optional<std::string> moveOver(const std::string& from, const std::string& to) {
  if (const auto identity = identityOf(from); identity && identity == identityOf(to)) {
    return std::nullopt;
  }
  return failureUnless(MoveFileExA(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) !=
                       FALSE);
}

std::optional<std::string> makeHiddenFolder(const std::string& path) {
  if (CreateDirectoryA(path.c_str(), nullptr) != FALSE) {
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_HIDDEN);
    return std::nullopt;
  }
  return failureUnless(GetLastError() == ERROR_ALREADY_EXISTS && kindOf(path) == PathKind::folder);
}

std::optional<std::string> makePrivateFolders(const std::string& path) {
  const std::string above = folderAbove(path);
  if (!above.empty() && above != path && kindOf(above) == PathKind::missing) {
    if (auto failure = makePrivateFolders(above)) {
      return failure;
    }
  }
  return failureUnless(CreateDirectoryA(path.c_str(), nullptr) != FALSE || kindOf(path) == PathKind::folder);
}

std::optional<std::string> removeEntry(const std::string& path) {
  return failureUnless(DeleteFileA(path.c_str()) != FALSE || isMissing(GetLastError()));
}

void removeEmptyFolder(const std::string& path) {
  RemoveDirectoryA(path.c_str());
}

std::optional<std::string> flushFolderAt(const std::string& /*folder*/) {
  return std::nullopt;
}

std::string stateFolder() {
  const char* const local = std::getenv("LOCALAPPDATA");
  return local != nullptr && *local != '\0' ? pathIn(local, "KivSystem") : "";
}

}  // namespace kiv
