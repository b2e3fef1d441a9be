// Loaded before the C library, this library intercepts the functions that access the disk or allocate memory. It calls
// the original functions, unless the environment injects a fault:
//
//   KIV_FAULT_CALL    the number of the call that fails, counted from 1
//   KIV_FAULT_ONWARD  not 0: all later calls fail, too
//   KIV_FAULT_ERROR   the error number of the failure; without it, the call kills the process:
//   KIV_FAULT_AFTER   not 0: after the call instead of before it
//   KIV_FAULT_AMONG   which calls are counted: those for "files", for "folders", for "status", or for "memory"
//   KIV_FAULT_LOG     the log file, with one line for each counted call

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

enum class Among { files, folders, status, memory };

Among amongIn(const char* name) {
  const char* const text = std::getenv(name);
  if (text == nullptr || std::strcmp(text, "files") == 0) {
    return Among::files;
  }
  if (std::strcmp(text, "status") == 0) {
    return Among::status;
  }
  return std::strcmp(text, "memory") == 0 ? Among::memory : Among::folders;
}

long numberIn(const char* name) {
  const char* const text = std::getenv(name);
  return text != nullptr ? std::strtol(text, nullptr, 10) : 0;
}

/// Read from the environment when the program is loaded.
struct FaultSettings {
  bool counting = false;
  long call = 0;
  bool onward = false;
  int error = 0;
  bool after = false;
  Among among = Among::files;
  int log = -1;
};

FaultSettings settings;
std::atomic<long> calls = 0;  // of all threads
constexpr int mostFiles = 64;
char names[mostFiles][PATH_MAX];  // of the open files

template <typename Function>
Function* next(const char* name) {
  return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

__attribute__((constructor)) void start() {
  settings = {false,
              numberIn("KIV_FAULT_CALL"),
              numberIn("KIV_FAULT_ONWARD") != 0,
              static_cast<int>(numberIn("KIV_FAULT_ERROR")),
              numberIn("KIV_FAULT_AFTER") != 0,
              amongIn("KIV_FAULT_AMONG"),
              -1};
  if (const char* const log = std::getenv("KIV_FAULT_LOG")) {
    settings.log = next<int(const char*, int, ...)>("open")(log, O_WRONLY | O_CREAT | O_TRUNC, 0666);
  }
}

[[noreturn]] void die() {
  ::kill(::getpid(), SIGKILL);
  ::_exit(1);
}

void logCall(const char* name, const char* file) {
  char line[PATH_MAX + 32];
  const int length = std::snprintf(line, sizeof line, "%s %s\n", name, file);
  static_cast<void>(
      next<ssize_t(int, const void*, std::size_t)>("write")(settings.log, line, static_cast<std::size_t>(length)));
}

/// For memory, only the number of calls is logged, because logging each call would allocate more of it.
__attribute__((destructor)) void logCallCount() {
  if (settings.among == Among::memory && settings.log >= 0) {
    char number[32];
    static_cast<void>(std::snprintf(number, sizeof number, "%ld", calls.load()));
    logCall("memory", number);
  }
}

/// One counted call; make() calls the original function, unless a fault is injected.
template <typename Result, typename Make>
Result counted(const char* name, const char* file, Result failure, Make make, Among kind = Among::files) {
  if (!settings.counting || settings.among != kind) {
    return make();
  }
  if (settings.log >= 0) {
    logCall(name, file);
  }
  const long call = ++calls;
  const bool hit = call == settings.call || (settings.onward && settings.call != 0 && call > settings.call);
  if (hit && settings.error != 0) {
    errno = settings.error;
    return failure;
  }
  if (hit && !settings.after) {
    die();
  }
  const Result result = make();
  if (hit) {
    die();
  }
  return result;
}

const char* nameOf(int file) {
  return file >= 0 && file < mostFiles ? names[file] : "";
}

int named(int file, const char* path) {
  if (file >= 0 && file < mostFiles) {
    std::strncpy(names[file], path, PATH_MAX - 1);
  }
  return file;
}

int (*mainOfProgram)(int, char**, char**) = nullptr;

int mainThatCounts(int argc, char** argv, char** environment) {
  settings.counting = true;
  return mainOfProgram(argc, argv, environment);
}

}  // namespace

// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,readability-inconsistent-declaration-parameter-name)
extern "C" {

/// Calls main. Earlier calls are not counted, because the program cannot report their failure.
int __libc_start_main(int (*main)(int, char**, char**), int argc, char** argv, void (*init)(), void (*finish)(),
                      void (*finishLoader)(), void* stackEnd) {
  mainOfProgram = main;
  return next<decltype(__libc_start_main)>("__libc_start_main")(mainThatCounts, argc, argv, init, finish, finishLoader,
                                                                stackEnd);
}

void* __libc_malloc(std::size_t size);

void* malloc(std::size_t size) {
  if (settings.counting && settings.among == Among::memory) {
    const long call = ++calls;
    if (call == settings.call || (settings.onward && settings.call != 0 && call > settings.call)) {
      errno = ENOMEM;
      return nullptr;
    }
  }
  return __libc_malloc(size);
}

int open(const char* path, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
  va_end(rest);
  return counted((flags & O_CREAT) != 0 ? "create" : "open", path, -1,
                 [&] { return named(next<int(const char*, int, ...)>("open")(path, flags, mode), path); });
}

int mkstemp(char* path) {
  return counted("mkstemp", path, -1, [&] { return named(next<int(char*)>("mkstemp")(path), path); });
}

ssize_t read(int file, void* buffer, std::size_t count) {
  return counted("read", nameOf(file), ssize_t{-1},
                 [&] { return next<ssize_t(int, void*, std::size_t)>("read")(file, buffer, count); });
}

ssize_t write(int file, const void* bytes, std::size_t count) {
  return counted("write", nameOf(file), ssize_t{-1},
                 [&] { return next<ssize_t(int, const void*, std::size_t)>("write")(file, bytes, count); });
}

int fchmod(int file, mode_t mode) noexcept {
  return counted("fchmod", nameOf(file), -1, [&] { return next<int(int, mode_t)>("fchmod")(file, mode); });
}

int fsync(int file) {
  return counted("fsync", nameOf(file), -1, [&] { return next<int(int)>("fsync")(file); });
}

int rename(const char* from, const char* to) noexcept {
  return counted("rename", to, -1, [&] { return next<int(const char*, const char*)>("rename")(from, to); });
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) noexcept {
  return counted("renameat2", to, -1, [&] {
    return next<int(int, const char*, int, const char*, unsigned)>("renameat2")(fromFolder, from, toFolder, to, flags);
  });
}

int unlink(const char* path) noexcept {
  return counted("unlink", path, -1, [&] { return next<int(const char*)>("unlink")(path); });
}

int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) noexcept {
  return counted("linkat", to, -1, [&] {
    return next<int(int, const char*, int, const char*, int)>("linkat")(fromFolder, from, toFolder, to, flags);
  });
}

int mkdir(const char* path, mode_t mode) noexcept {
  return counted("mkdir", path, -1, [&] { return next<int(const char*, mode_t)>("mkdir")(path, mode); });
}

int rmdir(const char* path) noexcept {
  return counted("rmdir", path, -1, [&] { return next<int(const char*)>("rmdir")(path); });
}

DIR* opendir(const char* path) {
  return counted(
      "opendir", path, static_cast<DIR*>(nullptr), [&] { return next<DIR*(const char*)>("opendir")(path); },
      Among::folders);
}

int stat(const char* path, struct stat* status) noexcept {
  return counted(
      "stat", path, -1, [&] { return next<int(const char*, struct stat*)>("stat")(path, status); }, Among::status);
}

int lstat(const char* path, struct stat* status) noexcept {
  return counted(
      "lstat", path, -1, [&] { return next<int(const char*, struct stat*)>("lstat")(path, status); }, Among::status);
}

char* getcwd(char* buffer, std::size_t size) noexcept {
  return counted(
      "getcwd", "", static_cast<char*>(nullptr),
      [&] { return next<char*(char*, std::size_t)>("getcwd")(buffer, size); }, Among::folders);
}

}  // extern "C"
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,readability-inconsistent-declaration-parameter-name)
