#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include <sys/types.h>

namespace kiv::test {

/// kivsys at work, its standard error read as it comes. It must be waited for.
class RunningProgram {
 public:
  /// Starts it in the folder, with its temporary files there in "tmp". Standard input is a pipe that stays open.
  RunningProgram(const std::filesystem::path& folder, std::vector<std::string> arguments);
  RunningProgram(const RunningProgram&) = delete;
  RunningProgram& operator=(const RunningProgram&) = delete;
  ~RunningProgram();

  /// Waits until it has written this line to standard error. False when it ends before.
  bool says(const std::string& line);
  /// Waits until it handles SIGINT and sleeps, as it does when it waits for something outside. False when it ends
  /// before.
  bool waits() const;
  /// Waits until it handles SIGINT. False when it ends before.
  bool handlesSignals() const;
  void signal(int number) const;
  /// Gives it this text on its standard input, which ends with it.
  void give(const std::string& text);
  /// Waits for its end, and returns the exit status; minus the signal when one has killed it.
  int end();
  const std::string& error() const { return error_; }

 private:
  bool readMore();
  bool reaches(bool asleep) const;

  pid_t child_ = -1;
  int input_ = -1;
  int errorOut_ = -1;
  std::string error_;
  std::string state_;  // the folder in which the program keeps its state
};

}  // namespace kiv::test
