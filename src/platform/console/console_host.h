#pragma once

#include <string>
#include <vector>

#include "platform/console/console_system.h"
#include "platform/console/console_user.h"
#include "platform/console/folder_locks.h"
#include "platform/host.h"

namespace kiv {

/// All that surrounds a run of the console program.
class ConsoleHost {
 public:
  explicit ConsoleHost(Guard guard = Guard::on) : system_(guard) {}

  ConsoleSystem& system() { return system_; }
  const ConsoleSystem& system() const { return system_; }
  ConsoleUser& user() { return user_; }
  /// The folders that the run has locked.
  FolderLocks& locks() { return locks_; }
  Host host() { return {system_, user_, system_, system_}; }

  /// From now on, messages are printed in the console's own words.
  void useConsoleWords() {
    user_.useConsoleWords([this](const std::string& name) { return system_.shownName(name); },
                          [this](const std::string& name) { return system_.outputPath(name); },
                          [this] { return system_.writeFailure(); });
  }

  /// The messages in the order in which they were shown.
  const std::vector<ShownMessage>& messages() const { return user_.messages(); }
  std::vector<std::string> replacedFiles() const { return system_.replacedFiles(); }

 private:
  ConsoleSystem system_;
  ConsoleUser user_{system_};
  FolderLocks locks_;
};

}  // namespace kiv
