#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace kiv {

/// How a started program's window is shown.
enum class ShowState { leftToTheSystem, maximized };
enum class WindowStyle : int { normal = 1, maximized = 3 };

/// Why the scripting shell did not run a program.
struct ShellFailure {
  std::int32_t number = 0;  ///< as a script sees it: a small one of the script's own, or the platform's, negative
  std::string text;         ///< the platform's words

  bool operator==(const ShellFailure&) const = default;
};

/// Other programs.
class Programs {
 public:
  Programs() = default;
  Programs(const Programs&) = delete;
  Programs& operator=(const Programs&) = delete;
  virtual ~Programs() = default;

  /// Starts the command line as a process and waits for its end. Returns its exit code, -1 when it does not start.
  virtual std::int32_t runProcess(const std::string& commandLine, ShowState show) = 0;
  /// Runs the command through the scripting shell and waits for its end. Returns the failure.
  [[nodiscard]] virtual std::optional<ShellFailure> runInShell(const std::string& command, WindowStyle style) = 0;
};

}  // namespace kiv
