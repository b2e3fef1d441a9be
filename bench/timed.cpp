// Runs a program a number of times, its output dropped, and prints a line for each run: the seconds from start to end,
// the most memory that any run so far had resident, in KB, and the seconds that processors worked for it.
//
// timed RUNS PROGRAM [ARGUMENT...]

#include <array>
#include <chrono>
#include <cstdlib>
#include <iomanip>
#include <iostream>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// Whether the program ended with exit code 0.
bool run(char** command, const posix_spawn_file_actions_t& quiet) {
  pid_t child = 0;
  int status = 0;
  return ::posix_spawnp(&child, command[0], &quiet, nullptr, command, environ) == 0 &&
         ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

rusage usageOfChildren() {
  rusage usage{};
  ::getrusage(RUSAGE_CHILDREN, &usage);
  return usage;
}

double seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

double worked(const rusage& usage) {
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) {
    std::cerr << "usage: timed RUNS PROGRAM [ARGUMENT...]\n";
    return 2;
  }
  posix_spawn_file_actions_t quiet;
  ::posix_spawn_file_actions_init(&quiet);
  for (const int output : std::array{STDOUT_FILENO, STDERR_FILENO}) {
    ::posix_spawn_file_actions_addopen(&quiet, output, "/dev/null", O_WRONLY, 0);
  }
  const long runs = std::strtol(argv[1], nullptr, 10);
  for (long number = 0; number < runs; ++number) {
    const rusage before = usageOfChildren();
    const auto begun = std::chrono::steady_clock::now();
    if (!run(argv + 2, quiet)) {
      std::cerr << "timed: " << argv[2] << " failed\n";
      return 1;
    }
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begun;
    const rusage after = usageOfChildren();
    std::cout << std::fixed << std::setprecision(5) << taken.count() << ' ' << after.ru_maxrss << ' '
              << worked(after) - worked(before) << '\n';
  }
  return 0;
}
