#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"
#include "platform/machine.h"
#include "platform/posix/file_destination.h"
#include "platform/posix/path_finder.h"
#include "platform/prepared_file.h"
#include "platform/programs.h"

namespace kiv {

/// Files, programs and clock of a system where file names are written with slashes and are case-sensitive.
/// Names are found as PathFinder finds them. Text is UTF-8.
class PosixSystem : public Files, public Programs, public Machine {
 public:
  /// The run's current folder is that of the process.
  PosixSystem();

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
  /// Finds out where replaceFile would put a file that has this path on the disk. Signals wait as long as there are
  /// such destinations, which may be several at a time, in the same folder. They end on the thread that this is.
  /// Returns the failure's text.
  [[nodiscard]] std::optional<std::string> findDestination(const std::string& path, Destination& destination);
  /// Whether a signal waits for that.
  static bool areSignalsWaiting();
  /// The file has been put there.
  void noteReplaced(const Destination& destination);

  /// Opens a file of the program's own empty. What a link of that name leads to stays as it is, and so does a file that
  /// has other names, too: a new file takes the name. Null when it cannot be written.
  std::unique_ptr<OutputFile> openOwnOutput(const std::string& name);
  /// From now on, files that are created are for nobody who may not read this file: what is made from it is no less
  /// private.
  void keepPrivacyOf(const std::string& path);
  /// Waits until what was written into the file is on the disk. False when that fails.
  bool flushFile(const std::string& name);
  /// Waits until the folders that hold replaced files are on the disk. Returns the folder and failure.
  [[nodiscard]] std::optional<std::string> flushFolders();
  /// Makes a folder, named as the user typed it, the run's current one. False when it cannot be.
  bool enterFolder(const std::string& typed);
  /// Prepares this process, before anything else is done: no file may get the number of a standard stream that the
  /// program was started without, and what the user withholds from new files is noted. Freed memory is kept from now
  /// on.
  static void prepareProcess();
  /// The full name, as the core writes names, of a file named as the user typed it.
  std::string fullName(const std::string& typed) { return coreName(fullPath(typed)); }
  /// As long as one lives, fullName and beyondKnownNames ask only once about the current folder and about each folder
  /// that names are typed with. For many names in a row.
  class FolderMemory {
   public:
    explicit FolderMemory(PosixSystem& system) : system_(system) { system.remembersFolders_ = true; }
    FolderMemory(const FolderMemory&) = delete;
    FolderMemory& operator=(const FolderMemory&) = delete;
    ~FolderMemory() { system_.forgetFolders(); }

   private:
    PosixSystem& system_;
  };
  /// Whether a name of the core begins at the root. A drive is a folder like any other.
  static bool isFullName(const std::string& name) { return name.starts_with('\\'); }
  /// A file name as the user typed it, as the core writes names.
  static std::string coreName(const std::string& typed);
  /// The file or folder on the way to what was typed that the core cannot name, as it takes backslashes for separators:
  /// what was typed if the backslash is in there, else the path of the folder. "" when there is none.
  static std::string beyondNames(const std::string& typed);
  /// The same, as fullName finds the file.
  std::string beyondKnownNames(const std::string& typed) {
    return beyondNames(typed, fullPath(typed.empty() ? "." : typed));
  }
  /// The same for a file or folder that need not be there yet.
  static std::string beyondNewNames(const std::string& typed) {
    return typed.find('\\') == std::string::npos ? beyondNames(typed) : typed;
  }
  /// The name under which the disk has a file that the core names.
  std::string diskName(const std::string& name) { return paths_.resolve(name); }
  /// The path of a name of the core as it is written, whatever the disk has in another case.
  static std::string exactPath(const std::string& name);
  /// The path of the file that replaceFile would put a new one in the place of: what a link leads to.
  std::string replacedPath(const std::string& name);
  /// The files that a name stands for: itself, as the shell has expanded wildcards.
  static std::vector<std::string> filesMatching(const std::string& typed) { return {typed}; }
  /// Makes a file with this content in the folder for temporary files; "" when that fails.
  std::string makeTemporaryFile(std::string_view content);
  /// The text as UTF-8.
  static std::string toUtf8(std::string_view text) { return std::string(text); }
  /// Text in UTF-8 as the core has it.
  static std::string fromUtf8(std::string_view text) { return std::string(text); }
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
  /// From now on, a folder that is there as it is written is the one that is meant, whatever others differ in case
  /// only.
  void useExactFolders() { paths_.useExactFolders(); }

 private:
  static std::string beyondNames(const std::string& typed, const std::string& path);
  static std::optional<std::string> plainPathOf(const std::string& typed);
  std::string fullPath(const std::string& typed);
  void forgetFolders();

  enum class Existing { replaced, kept };
  std::optional<std::string> putFile(const std::string& name, std::string_view bytes, Existing existing);

  PathFinder paths_;
  bool remembersFolders_ = false;
  std::map<std::string, std::string> fullFolders_;  // by folder as it was typed; only what is remembered
  unsigned modeLimit_ = 0777;                       // of files that are created
  std::string mark_;                                // of temporary files
  std::weak_ptr<FilesUnderWay> underWay_;           // null while no destination is used
  std::set<std::string> unflushed_;                 // folders in which files were replaced, as the disk names them
};

}  // namespace kiv
