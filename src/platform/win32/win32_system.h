#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"
#include "platform/machine.h"
#include "platform/prepared_file.h"
#include "platform/programs.h"
#include "platform/win32/file_destination.h"

namespace kiv {

/// Files, clock, profile and programs of Windows, through its byte calls: text is bytes of the ANSI code page.
class Win32System : public Files, public Programs, public Machine {
 public:
  std::unique_ptr<InputFile> openInput(const std::string& name) override;
  std::unique_ptr<OutputFile> openOutput(const std::string& name) override;
  std::optional<std::string> replaceFile(const std::string& name, std::string_view bytes) override;
  bool deleteFile(const std::string& name) override;
  std::vector<FolderEntry> listFolder(const std::string& folder) override;
  std::string currentFolder() override;
  std::optional<std::string> shortName(const std::string& path) override;
  LocalTime now() override;
  std::string upperCase(std::string_view text) override;
  std::size_t characterCount(std::string_view text) override;
  bool isLeadByte(char byte) override;
  std::string profileKey(const std::string& key) override;
  std::int32_t runProcess(const std::string& commandLine, ShowState show) override;
  std::optional<ShellFailure> runInShell(const std::string& command, WindowStyle style) override;

  // --- for the console programs ---

  /// The same as replaceFile where there is no file yet: one that is there, or has only just come, stays, and this
  /// fails.
  [[nodiscard]] virtual std::optional<std::string> createFile(const std::string& name, std::string_view bytes);

  using Destination = FileDestination;
  /// From now on, names of files that are not whole yet have this mark in them: letters and digits.
  void markTemporaryFiles(const std::string& mark) { mark_ = mark; }
  /// Finds out where replaceFile would put a file that has this path on the disk. Returns the failure's text.
  [[nodiscard]] std::optional<std::string> findDestination(const std::string& path, Destination& destination);
  /// Signals do not wait.
  static bool areSignalsWaiting() { return false; }
  /// The file has been put there: nothing has to be remembered.
  static void noteReplaced(const Destination& /*destination*/) {}

  /// Opens a file of the program's own empty. What a link of that name leads to stays as it is. Null when it cannot be
  /// written.
  static std::unique_ptr<OutputFile> openOwnOutput(const std::string& name);
  /// New files have the rights of their folder here.
  static void keepPrivacyOf(const std::string& /*path*/) {}
  /// Waits until what was written into the file is on the disk. False when that fails.
  static bool flushFile(const std::string& name);
  /// A replaced file and its name are on the disk already.
  [[nodiscard]] static std::optional<std::string> flushFolders() { return std::nullopt; }
  /// Makes a folder, named as the user typed it, the run's current one. False when it cannot be.
  static bool enterFolder(const std::string& typed);
  /// Prepares this process, before anything else is done.
  static void prepareProcess();
  /// The full name, as the core writes names, of a file named as the user typed it.
  static std::string fullName(const std::string& typed);
  /// Whether a name of the core begins at the root of a drive, or of the current one.
  static bool isFullName(const std::string& name) { return name.starts_with('\\') || name.find(':') == 1; }
  /// A file name as the user typed it, as the core writes names.
  static std::string coreName(const std::string& typed);
  /// Nothing is remembered: fullName asks about no folder.
  struct FolderMemory {
    explicit FolderMemory(Win32System& /*system*/) {}
  };
  /// The file or folder on the way to what was typed that the core cannot name; "" when there is none.
  static std::string beyondNames(const std::string& /*typed*/) { return ""; }
  static std::string beyondKnownNames(const std::string& /*typed*/) { return ""; }
  /// The same for a file or folder that need not be there yet.
  static std::string beyondNewNames(const std::string& /*typed*/) { return ""; }
  /// The name under which the disk has a file that the core names.
  static std::string diskName(const std::string& name) { return name; }
  /// The path of a name of the core as it is written.
  static std::string exactPath(const std::string& name) { return name; }
  /// The path of the file that replaceFile would put a new one in the place of.
  static std::string replacedPath(const std::string& name) { return name; }
  /// The files that a name with wildcards stands for, in order, as no shell has expanded them; the name itself
  /// when there are none.
  static std::vector<std::string> filesMatching(const std::string& typed);
  /// Makes a file with this content in the folder for temporary files; "" when that fails.
  static std::string makeTemporaryFile(std::string_view content);
  /// The text as UTF-8.
  static std::string toUtf8(std::string_view text);
  /// Text in UTF-8 as the core has it; characters that the ANSI code page lacks become its replacement character.
  static std::string fromUtf8(std::string_view text);
  /// Writes text to standard error as the terminal understands it.
  static void writeError(std::string_view text);
  /// Whether standard error is a terminal.
  static bool errorIsTerminal();
  /// Whether standard input is one, so that the user can be asked.
  static bool inputIsTerminal();
  /// Whether standard output is a terminal that shows colors, and the user has not asked for none with NO_COLOR.
  static bool outputTakesColor();
  /// The columns of the terminal that standard output is; 0 when it is none, or its width is unknown.
  static std::size_t outputColumns();

 protected:
  /// A disk of Windows has no folders that differ in case only.
  static void useExactFolders() {}

 private:
  std::string mark_;  // of temporary files
};

}  // namespace kiv
