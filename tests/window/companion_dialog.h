#pragma once

#include <string>

#include "tests/window/started_program.h"

namespace kiv::test {

/// The command line of a companion: the program and its fields.
std::string companionCall(const std::string& program, const std::string& fields);

/// The program shows one box with this text and its name as title, which is closed, and ends with this code.
void expectLastBox(WatchedProcess& program, const std::string& title, const std::string& text, std::int32_t exitCode);

/// The system's dialog for files or folders, as a companion shows it.
class CompanionDialog {
 public:
  /// Waits for the dialog; there is a failure when it does not come up.
  explicit CompanionDialog(WatchedProcess& program);

  std::string title() const;
  /// What the dialog offers, in words.
  std::string filter() const;
  /// Whether more than one entry can be selected.
  bool allowsSeveral() const;
  /// Waits until this number of files and folders is offered.
  void expectEntries(int count);

  /// Types names, as a user does, and clicks Open.
  void choose(const std::wstring& typed);
  void choose(const std::string& typed);
  void clickCancel();

 private:
  bool isReady();
  void clickAndWait(int button);
  HWND child(const std::string& className, int identifier) const;

  WatchedProcess& program_;
  HWND window_ = nullptr;
};

}  // namespace kiv::test
