#include "platform/posix/posix_system.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <new>
#include <system_error>
#include <utility>

#include <fcntl.h>
#ifdef __GLIBC__
#include <malloc.h>
#endif
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/posix/own_files.h"
#include "platform/posix/plain_path.h"
#include "platform/posix/posix_files.h"
#include "platform/posix/utf8.h"

namespace kiv {
namespace {

std::string swapped(std::string text, char from, char to) {
  std::replace(text.begin(), text.end(), from, to);
  return text;
}

/// What a page or a system takes, the next one takes as well. Given back to the system each time, memory costs more
/// than what is done in it.
void keepFreedMemory() {
#ifdef __GLIBC__
  constexpr int mostBytes = 16 * 1024 * 1024;
  ::mallopt(M_MMAP_THRESHOLD, mostBytes);
  ::mallopt(M_TRIM_THRESHOLD, mostBytes);
#endif
}

}  // namespace

PosixSystem::PosixSystem() = default;

std::unique_ptr<InputFile> PosixSystem::openInput(const std::string& name) {
  // Most names are those of the disk, which then needs no search.
  const auto likely = paths_.likelyPath(name);
  if (likely) {
    auto file = openForReading(*likely);
    if (file || (errno != ENOENT && errno != ENOTDIR)) {
      return file;
    }
  }
  const std::string path = paths_.resolve(name);
  return path == likely ? nullptr : openForReading(path);
}

std::unique_ptr<OutputFile> PosixSystem::openOutput(const std::string& name) {
  return openForWriting(paths_.resolve(name));
}

void PosixSystem::keepPrivacyOf(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) == 0) {
    modeLimit_ &= status.st_mode | S_IWUSR;
  }
}

std::string PosixSystem::replacedPath(const std::string& name) {
  const std::string path = paths_.resolve(name);
  return linkTarget(path).value_or(path);
}

std::unique_ptr<OutputFile> PosixSystem::openOwnOutput(const std::string& name) {
  return openOwnForWriting(paths_.resolve(name));
}

bool PosixSystem::flushFile(const std::string& name) {
  const Descriptor file(::open(paths_.resolve(name).c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  return file.isOpen() && (::fsync(file.number()) == 0 || errno == EINVAL);  // a pipe has nothing on the disk
}

bool PosixSystem::deleteFile(const std::string& name) {
  return ::unlink(paths_.resolve(name).c_str()) == 0;
}

std::vector<FolderEntry> PosixSystem::listFolder(const std::string& folder) {
  std::vector<FolderEntry> entries;
  const std::string path = paths_.resolve(folder);
  forEachEntry(path, [&](const char* name) {
    struct stat status {};
    const bool isFolder = ::stat((path + name).c_str(), &status) == 0 && S_ISDIR(status.st_mode);
    entries.push_back({name, isFolder});
  });
  return entries;
}

std::string PosixSystem::currentFolder() {
  std::error_code failure;
  const auto path = std::filesystem::current_path(failure);
  checkMemory(failure);
  return coreName(path.string());
}

std::optional<std::string> PosixSystem::shortName(const std::string& /*path*/) {
  return std::nullopt;
}

LocalTime PosixSystem::now() {
  const std::time_t seconds = std::time(nullptr);
  std::tm local{};
  ::localtime_r(&seconds, &local);
  return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec};
}

std::string PosixSystem::upperCase(std::string_view text) {
  return upperCaseUtf8(text);
}

std::size_t PosixSystem::characterCount(std::string_view text) {
  return characterCountUtf8(text);
}

std::string PosixSystem::profileKey(const std::string& /*key*/) {
  return "";
}

std::int32_t PosixSystem::runProcess(const std::string& /*commandLine*/, ShowState /*show*/) {
  return -1;
}

std::optional<ShellFailure> PosixSystem::runInShell(const std::string& /*command*/, WindowStyle /*style*/) {
  constexpr std::int32_t cannotMakeObject = 429;
  return ShellFailure{cannotMakeObject, "The scripting shell is not available"};
}

bool PosixSystem::enterFolder(const std::string& typed) {
  std::error_code failure;
  std::filesystem::current_path(typed, failure);
  paths_.clear();
  fullFolders_.clear();
  return !failure;
}

/// Nullopt when the current folder is not known.
std::optional<std::string> PosixSystem::plainPathOf(const std::string& typed) {
  std::error_code failure;
  const auto path = std::filesystem::absolute(typed, failure);
  checkMemory(failure);
  return failure ? std::nullopt : std::optional(plainPath(path.native()));
}

std::string PosixSystem::fullPath(const std::string& typed) {
  const std::size_t fileAt = typed.rfind(separator) + 1;
  const std::string file = typed.substr(fileAt);
  if (!remembersFolders_ || file.empty() || file == "." || file == "..") {
    return plainPathOf(typed).value_or(typed);
  }
  const std::string folder = typed.substr(0, fileAt);
  auto known = fullFolders_.find(folder);
  if (known == fullFolders_.end()) {
    const auto path = plainPathOf(folder.empty() ? "." : folder);
    if (!path) {
      return typed;
    }
    known = fullFolders_.emplace(folder, *path).first;
  }
  return known->second + file;
}

void PosixSystem::forgetFolders() {
  remembersFolders_ = false;
  fullFolders_.clear();
}

std::string PosixSystem::coreName(const std::string& typed) {
  return swapped(typed, separator, '\\');
}

std::string PosixSystem::exactPath(const std::string& name) {
  return swapped(name, '\\', separator);
}

void PosixSystem::prepareProcess() {
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    // The lowest free number is the one that is given. Reading from an output fails, as it would without any file.
    if (::fcntl(stream, F_GETFD) == -1 && errno == EBADF) {
      static_cast<void>(::open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY));
    }
  }
  noteWithheldMode();
  keepFreedMemory();
}

std::string PosixSystem::beyondNames(const std::string& typed) {
  return beyondNames(typed, plainPathOf(typed.empty() ? "." : typed).value_or(typed));
}

std::string PosixSystem::beyondNames(const std::string& typed, const std::string& path) {
  for (std::size_t at = path.find('\\'); at != std::string::npos;) {
    const std::string start = path.substr(0, path.find(separator, at));
    struct stat status {};
    if (::lstat(start.c_str(), &status) == 0) {
      return typed.find('\\') == std::string::npos ? start : typed;
    }
    at = path.find('\\', start.size());
  }
  return "";
}

std::string PosixSystem::makeTemporaryFile(std::string_view content) {
  std::error_code failure;
  std::string path = (std::filesystem::temp_directory_path(failure) / "kivsys-XXXXXX").string();
  const Descriptor file(failure ? -1 : ::mkstemp(path.data()));
  if (!file.isOpen()) {
    return "";
  }
  if (writeAll(file, content)) {
    ::unlink(path.c_str());
    return "";
  }
  return coreName(path);
}

void PosixSystem::writeError(std::string_view text) {
  // A failure of standard error cannot be reported.
  static_cast<void>(std::fwrite(text.data(), 1, text.size(), stderr));
  static_cast<void>(std::fflush(stderr));
}

bool PosixSystem::errorIsTerminal() {
  return ::isatty(STDERR_FILENO) != 0;
}

bool PosixSystem::inputIsTerminal() {
  return ::isatty(STDIN_FILENO) != 0;
}

bool PosixSystem::outputTakesColor() {
  const char* none = std::getenv("NO_COLOR");
  const char* terminal = std::getenv("TERM");
  const bool plain = terminal != nullptr && std::string_view(terminal) == "dumb";
  return ::isatty(STDOUT_FILENO) != 0 && !plain && (none == nullptr || *none == '\0');
}

std::size_t PosixSystem::outputColumns() {
  winsize size{};
  return ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

}  // namespace kiv
