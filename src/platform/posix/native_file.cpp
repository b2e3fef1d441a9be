#include "platform/native_file.h"

#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include "platform/posix/own_files.h"
#include "platform/posix/posix_files.h"

namespace kiv {
namespace {

std::string wordsFor(std::errc failure) {
  return std::make_error_code(failure).message();
}

/// The folder that has the entry of a file or folder; "." for a name alone.
std::string folderOfEntry(std::string path) {
  while (path.size() > 1 && path.ends_with('/')) {
    path.pop_back();
  }
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}

}  // namespace

std::optional<FileIdentity> identityOf(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) {
    return std::nullopt;
  }
  return FileIdentity{status.st_dev, status.st_ino};
}

std::optional<FileIdentity> identityOfStandardInput() {
  struct stat status {};
  const bool isFile = ::fstat(STDIN_FILENO, &status) == 0 && S_ISREG(status.st_mode);
  return isFile ? std::optional(FileIdentity{status.st_dev, status.st_ino}) : std::nullopt;
}

std::optional<FileStamp> stampOf(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 ? std::optional(stampOf(status)) : std::nullopt;
}

PathKind kindOf(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) {
    return PathKind::missing;
  }
  if (S_ISDIR(status.st_mode)) {
    return PathKind::folder;
  }
  return S_ISREG(status.st_mode) ? PathKind::file : PathKind::device;
}

ReadCheck checkReadable(const std::string& path, Fetch fetch) {
  // Without O_NONBLOCK, opening a pipe would wait for a writer.
  const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat status {};
  if (!file.isOpen() || ::fstat(file.number(), &status) != 0) {
    return {lastFailure(), std::nullopt};
  }
  const FileStamp stamp = stampOf(status);
  if (S_ISDIR(status.st_mode)) {
    return {wordsFor(std::errc::is_a_directory), stamp};
  }
  if (!S_ISREG(status.st_mode)) {
    return {"Not a regular file", stamp};
  }
  if (fetch == Fetch::wanted) {
    fetchSoon(file);
  }
  return {std::nullopt, stamp};
}

std::optional<std::string> writeFailure(const std::string& path) {
  const Descriptor file(::open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NONBLOCK));
  return file.isOpen() ? std::nullopt : std::optional(lastFailure());
}

std::optional<std::string> listFailure(const std::string& folder) {
  const Descriptor open(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  return open.isOpen() || errno == EMFILE || errno == ENFILE ? std::nullopt : std::optional(lastFailure());
}

std::string lastCallFailure() {
  return errno == 0 ? "" : lastFailure();
}

std::optional<std::uint64_t> freeBytes(const std::string& folder) {
  struct statvfs disk {};
  return ::statvfs(folder.c_str(), &disk) == 0 ? std::optional<std::uint64_t>(disk.f_bavail * disk.f_frsize)
                                               : std::nullopt;
}

std::optional<std::string> makeFolder(const std::string& path) {
  constexpr mode_t openToAll = 0777;
  if (::mkdir(path.c_str(), openToAll) != 0) {
    return lastFailure();
  }
  return flushFolder(folderOfEntry(path));
}

}  // namespace kiv
