#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tests/window/started_program.h"

namespace kiv::test {

/// A path that the caller of the tests has put into the environment, "" with a failure when it is not there.
std::string givenPath(const char* variable);

/// All files below a folder, named from there, sorted.
std::vector<std::string> filesBelow(const std::string& folder);

/// The content of a shortcut.
struct Shortcut {
  std::string program;
  std::string arguments;
  std::string folder;  ///< the current one of the started program
};
/// nullopt when there is no such shortcut.
std::optional<Shortcut> readShortcut(const std::string& file);

/// The program in the user's list of installed apps.
class AppEntry {
 public:
  static bool exists();
  /// A text of the entry, "" when it is not there.
  static std::string text(const std::string& name);
};

/// Where the installer puts the program, and its shortcut, by default.
std::string standardFolder();
std::string shortcutFile();

/// Starts what the shortcut names, in its folder.
WatchedProcess openShortcut();

/// Runs the installer without questions and waits for its end.
std::optional<std::int32_t> install();
/// Runs the uninstaller as the list of apps does, without questions, and waits until the entry is gone.
void uninstall();

/// Waits for a program that shows the panel, no matter how it was started.
std::optional<WatchedProcess> programWithPanel();
/// The file that a process runs.
std::string fileOf(const WatchedProcess& process);

}  // namespace kiv::test
