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

/// A file or folder, gone with this object, whose name the code page cannot hold.
class WideEntry {
 public:
  enum class Kind { file, folder };
  WideEntry(const std::string& folder, const std::wstring& name, Kind kind);
  WideEntry(const WideEntry&) = delete;
  WideEntry& operator=(const WideEntry&) = delete;
  ~WideEntry();

  const std::wstring& path() const { return path_; }
  /// The name by which byte calls reach the entry, without its folder.
  std::string shortName() const;

 private:
  std::wstring path_;
  Kind kind_;
};

}  // namespace kiv::test
