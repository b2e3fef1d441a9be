#include "tests/console/running_program.h"

#include <array>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <fstream>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <stdlib.h>  // setenv, mkdtemp
#include <sys/wait.h>
#include <unistd.h>

namespace kiv::test {

RunningProgram::RunningProgram(const std::filesystem::path& folder, std::vector<std::string> arguments) {
  std::filesystem::create_directories(folder / "tmp");
  state_ = (std::filesystem::temp_directory_path() / "kivsys-state-XXXXXX").string();
  EXPECT_NE(::mkdtemp(state_.data()), nullptr);
  std::array<int, 2> in{};
  std::array<int, 2> error{};
  EXPECT_EQ(::pipe2(in.data(), O_CLOEXEC), 0);
  EXPECT_EQ(::pipe2(error.data(), O_CLOEXEC), 0);
  arguments.insert(arguments.begin(), KIVSYS_PROGRAM);
  std::vector<char*> argv;
  for (std::string& argument : arguments) {
    argv.push_back(argument.data());
  }
  argv.push_back(nullptr);
  child_ = ::fork();
  if (child_ == 0) {
    const int out = ::open("/dev/null", O_WRONLY);
    if (::chdir(folder.c_str()) == 0 && ::setenv("TMPDIR", (folder / "tmp").c_str(), 1) == 0 &&
        ::setenv("XDG_STATE_HOME", state_.c_str(), 1) == 0 && ::dup2(in[0], STDIN_FILENO) >= 0 &&
        ::dup2(out, STDOUT_FILENO) >= 0 && ::dup2(error[1], STDERR_FILENO) >= 0) {
      ::execv(KIVSYS_PROGRAM, argv.data());
    }
    ::_exit(127);
  }
  ::close(in[0]);
  ::close(error[1]);
  input_ = in[1];
  errorOut_ = error[0];
}

RunningProgram::~RunningProgram() {
  ::close(input_);
  ::close(errorOut_);
  std::filesystem::remove_all(state_);
}

bool RunningProgram::readMore() {
  constexpr int timeLimit = 60000;  // in milliseconds, for a program that is stuck
  pollfd output{errorOut_, POLLIN, 0};
  if (::poll(&output, 1, timeLimit) == 0) {
    ADD_FAILURE() << "the program is stuck; so far it said: " << error_;
    ::kill(child_, SIGKILL);
    return false;
  }
  std::array<char, 4096> buffer{};
  const ssize_t got = ::read(errorOut_, buffer.data(), buffer.size());
  error_.append(buffer.data(), static_cast<std::size_t>(got > 0 ? got : 0));
  return got > 0;
}

bool RunningProgram::says(const std::string& line) {
  while (error_.find(line + "\n") == std::string::npos) {
    if (!readMore()) {
      return false;
    }
  }
  return true;
}

bool RunningProgram::waits() const {
  return reaches(true);
}

bool RunningProgram::handlesSignals() const {
  return reaches(false);
}

/// Waits until it handles SIGINT, and sleeps if that is wanted. False when it ends before.
bool RunningProgram::reaches(bool asleep) const {
  constexpr auto pause = std::chrono::milliseconds(2);
  constexpr auto timeLimit = std::chrono::seconds(60);
  const auto deadline = std::chrono::steady_clock::now() + timeLimit;
  while (std::chrono::steady_clock::now() < deadline) {
    std::string state;
    std::uint64_t handled = 0;
    std::ifstream status("/proc/" + std::to_string(child_) + "/status");
    for (std::string field; status >> field;) {
      if (field == "State:") {
        status >> state;
      } else if (field == "SigCgt:") {
        status >> std::hex >> handled >> std::dec;
      }
    }
    if (state.empty() || state == "Z") {
      return false;
    }
    if ((!asleep || state == "S") && (handled >> (SIGINT - 1U) & 1U) != 0) {
      return true;
    }
    std::this_thread::sleep_for(pause);
  }
  return false;
}

void RunningProgram::give(const std::string& text) {
  EXPECT_EQ(::write(input_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
  ::close(std::exchange(input_, -1));
}

void RunningProgram::signal(int number) const {
  EXPECT_EQ(::kill(child_, number), 0);
}

int RunningProgram::end() {
  while (readMore()) {
  }
  int status = 0;
  EXPECT_EQ(::waitpid(child_, &status, 0), child_);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

}  // namespace kiv::test
