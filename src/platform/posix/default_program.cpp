#include "platform/default_program.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <system_error>

#include <spawn.h>
#include <sys/wait.h>

extern char** environ;  // NOLINT(readability-redundant-declaration): POSIX declares it in no header

namespace kiv {
namespace {

#ifdef __APPLE__
constexpr const char* opener = "open";
#else
constexpr const char* opener = "xdg-open";
#endif

}  // namespace

/// The opener ends as soon as it has started the program; its words would be lost among those of this run.
std::optional<std::string> openWithDefaultProgram(const std::string& path) {
  std::string program = opener;
  std::string file = path.starts_with('-') ? "./" + path : path;
  std::array<char*, 3> arguments = {program.data(), file.data(), nullptr};
  pid_t child = 0;
  const int failure = posix_spawnp(&child, opener, nullptr, nullptr, arguments.data(), environ);
  if (failure != 0) {
    return program + ": " + std::generic_category().message(failure);
  }
  int status = 0;
  while (waitpid(child, &status, 0) < 0) {
    if (errno != EINTR) {
      return program + ": " + std::generic_category().message(errno);
    }
  }
  return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? std::nullopt : std::optional(program + " failed");
}

}  // namespace kiv
