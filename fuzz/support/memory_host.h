#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/host.h"

namespace kiv::fuzz {

/// A disk in memory that knows no case, and a person who says Yes. It keeps no record but of messages, so that a run
/// costs little.
class MemoryHost : public Host {
 public:
  // --- what a target prepares and looks at ---
  std::map<std::string, std::string, std::less<>> profile;
  bool refusesDeletion = false;  ///< no file can be deleted
  int messages = 0;              ///< shown so far
  std::string lastMessage;

  /// Forgets files, messages and profile.
  void restart();
  void addFile(std::string_view name, std::string content);
  /// The file's content; null when there is none.
  const std::string* find(std::string_view name) const;

  // --- Host ---
  Answer message(Icon icon, std::string_view text, Buttons buttons) override;
  bool showText(const std::string&) override { return true; }
  void setPointer(Pointer) override {}
  void processEvents() override {}
  void showProgress(int, int, std::string_view) override {}
  std::unique_ptr<InputFile> openInput(const std::string& name) override;
  std::unique_ptr<OutputFile> openOutput(const std::string& name) override;
  std::optional<std::string> replaceFile(const std::string& name, std::string_view bytes) override;
  bool deleteFile(const std::string& name) override;
  std::vector<FolderEntry> listFolder(const std::string&) override { return {{"X1.MUS", false}, {"SUB", true}}; }
  std::string currentFolder() override { return "C:\\KIV"; }
  std::optional<std::string> shortName(const std::string&) override { return std::nullopt; }
  LocalTime now() override { return {1994, 3, 7, 5, 8, 9}; }
  std::string upperCase(std::string_view text) override;
  std::size_t characterCount(std::string_view text) override { return text.size(); }
  std::string profileKey(const std::string& key) override;
  std::int32_t runProcess(const std::string&, ShowState) override { return 0; }
  std::optional<ShellFailure> runInShell(const std::string&, WindowStyle) override { return std::nullopt; }

 private:
  struct File {
    std::string name;
    std::string content;
  };
  File* findFile(std::string_view name);

  std::vector<std::unique_ptr<File>> files_;  // where open files find them, whatever comes and goes
};

/// Runs a piece of the program. Returns the exit code that it ended the program with, nullopt when it did not.
template <typename Run>
std::optional<int> endOf(Run&& run) {
  try {
    std::forward<Run>(run)();
  } catch (const ProgramEnd& end) {
    return end.exitCode;
  }
  return std::nullopt;
}

}  // namespace kiv::fuzz
