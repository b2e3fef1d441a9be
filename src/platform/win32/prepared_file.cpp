#include "platform/prepared_file.h"

#include "platform/win32/file_destination.h"
#include "platform/win32/handle.h"
#include "platform/win32/text.h"
#include "platform/win32/win32_files.h"

namespace kiv {
namespace {

/// Creates a file beside the destination; sets its path. Not open when that fails.
Handle createBeside(const FileDestination& destination, std::string& path) {
  constexpr int attempts = 1000;
  const std::string mark = destination.mark.empty() ? std::to_string(GetCurrentProcessId()) : destination.mark;
  const std::string start = destination.folder + temporaryStart(mark);
  Handle file;
  bool isTaken = true;
  for (int i = 1; i <= attempts && isTaken; ++i) {
    path = start + std::to_string(i) + ".tmp";
    file = Handle(
        CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    isTaken = !file.isOpen() && GetLastError() == ERROR_FILE_EXISTS;
  }
  return file;
}

}  // namespace

FileDestination destinationOf(const std::string& path, const std::string& mark) {
  return {path, path.substr(0, folderLength(path)), mark};
}

std::string temporaryStart(const std::string& mark) {
  return "kiv" + mark + "-";
}

std::optional<std::string> PreparedFile::fill(const FileDestination& destination, std::string_view bytes) {
  target_ = destination.path;
  std::string path;
  const Handle file = createBeside(destination, path);
  if (!file.isOpen()) {
    return lastFailure();
  }
  path_ = path;
  if (auto failure = writeAll(file, bytes)) {
    return failure;
  }
  return FlushFileBuffers(file.get()) == FALSE ? std::optional(lastFailure()) : std::nullopt;
}

std::optional<std::string> PreparedFile::move(const std::string& from, const std::string& to, Existing existing) {
  const DWORD how = MOVEFILE_WRITE_THROUGH | (existing == Existing::replaced ? MOVEFILE_REPLACE_EXISTING : 0U);
  return MoveFileExA(from.c_str(), to.c_str(), how) == FALSE ? std::optional(lastFailure()) : std::nullopt;
}

void PreparedFile::remove(const std::string& path) {
  DeleteFileA(path.c_str());
}

}  // namespace kiv
