#include "tests/posix/injected_faults.h"

#include <algorithm>
#include <cerrno>
#include <csignal>

#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

// The functions of the C library through which a file is replaced are defined in this program once more, and so are
// called in place of the library's. They pass the call on, unless a fault is injected.

namespace kiv::test {

int callsMade = 0;
const char* callNames[mostCalls];

namespace {

InjectedFault fault;

[[noreturn]] void die() {
  ::kill(::getpid(), SIGKILL);
  ::_exit(1);
}

Failure failureAt(const char* name) {
  if (!fault.counting || callsMade == mostCalls) {
    return Failure::none;
  }
  callNames[callsMade++] = name;
  const bool hit = callsMade == fault.call || (fault.persists && fault.call != 0 && callsMade > fault.call);
  if (hit && fault.failure == Failure::killsBefore) {
    die();
  }
  return hit ? fault.failure : Failure::none;
}

template <typename Function>
Function* next(const char* name) {
  return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

template <typename Function, typename... Arguments>
int callOrFail(const char* name, Arguments... arguments) {
  const Failure failure = failureAt(name);
  if (failure == Failure::fails) {
    errno = fault.error;
    return -1;
  }
  const int result = next<Function>(name)(arguments...);
  if (failure == Failure::killsAfter) {
    die();
  }
  return result;
}

}  // namespace

FaultInjection::FaultInjection(InjectedFault injected) {
  callsMade = 0;
  fault = injected;
  fault.counting = true;
}

FaultInjection::~FaultInjection() {
  fault = {};
}

std::vector<std::string> calls() {
  return {callNames, callNames + callsMade};
}

}  // namespace kiv::test

extern "C" {

int mkstemp(char* name) {
  return kiv::test::callOrFail<int(char*)>("mkstemp", name);
}

int stat(const char* path, struct stat* status) noexcept {
  return kiv::test::callOrFail<int(const char*, struct stat*)>("stat", path, status);
}

ssize_t write(int file, const void* bytes, std::size_t count) {
  using kiv::test::Failure;
  const Failure failure = kiv::test::failureAt("write");
  if (failure == Failure::fails || (kiv::test::fault.counting && kiv::test::fault.freeSpace == 0 && count > 0)) {
    errno = failure == Failure::fails ? kiv::test::fault.error : ENOSPC;
    return -1;
  }
  const bool half = failure == Failure::writesHalf || failure == Failure::killsHalfway;
  std::size_t written = half ? (count + 1) / 2 : count;
  if (kiv::test::fault.counting) {
    written = std::min(written, kiv::test::fault.freeSpace);
    kiv::test::fault.freeSpace -= kiv::test::fault.freeSpace == SIZE_MAX ? 0 : written;
  }
  const ssize_t result = kiv::test::next<ssize_t(int, const void*, std::size_t)>("write")(file, bytes, written);
  if (failure == Failure::killsAfter || failure == Failure::killsHalfway) {
    kiv::test::die();
  }
  return result;
}

int fchmod(int file, mode_t mode) noexcept {
  return kiv::test::callOrFail<int(int, mode_t)>("fchmod", file, mode);
}

int fsync(int file) {
  return kiv::test::callOrFail<int(int)>("fsync", file);
}

int rename(const char* from, const char* to) noexcept {
  return kiv::test::callOrFail<int(const char*, const char*)>("rename", from, to);
}

int unlink(const char* path) noexcept {
  return kiv::test::callOrFail<int(const char*)>("unlink", path);
}

int close(int file) {
  using kiv::test::Failure;
  const Failure failure = kiv::test::failureAt("close");
  const int result = kiv::test::next<int(int)>("close")(file);  // a file whose close fails is closed all the same
  if (failure == Failure::killsAfter) {
    kiv::test::die();
  }
  if (failure == Failure::fails) {
    errno = kiv::test::fault.error;
    return -1;
  }
  return result;
}

}  // extern "C"
