#pragma once

#include <cstdint>
#include <ctime>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/host.h"

namespace kiv {

/// The world below a host where file names are written with slashes and are case-sensitive.
///
/// A name like \A\B stands for /A/B: each component is looked up as it is written first, and then regardless of
/// case; a folder in which the rest of the name is not found gives way to the next one. Text is UTF-8.
class PosixSystem : public Host {
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

  // --- for the programs around the core ---

  /// Makes a folder, named as the user typed it, the run's current one. False when it cannot be.
  bool enterFolder(const std::string& typed);
  /// The full name, as the core writes names, of a file named as the user typed it.
  std::string fullName(const std::string& typed);
  /// A file name as the user typed it, as the core writes names.
  static std::string coreName(const std::string& typed);
  /// The name under which the disk has a file that the core names.
  std::string diskName(const std::string& name) { return resolve(name); }
  /// The files that a name stands for: itself, as the shell has put the names in the place of wildcards.
  static std::vector<std::string> filesMatching(const std::string& typed) { return {typed}; }
  /// Makes a file with this content in the folder for temporary files; "" when that fails.
  std::string makeTemporaryFile(std::string_view content);
  /// The text as UTF-8.
  static std::string toUtf8(std::string_view text) { return std::string(text); }
  /// Writes text to standard error as the terminal understands it.
  static void writeError(std::string_view text);
  /// Whether standard error is a terminal.
  static bool errorIsTerminal();
  /// Whether standard input is one, so that somebody can be asked.
  static bool inputIsTerminal();
  /// Whether standard output is a terminal that shows colours, and the user has not asked for none with NO_COLOR.
  static bool outputTakesColour();
  /// The columns of the terminal that standard output is; 0 when it is none, or does not tell.
  static std::size_t outputColumns();

 private:
  /// The file that a name stands for; where there is none, the path under which it would be made. "" for what cannot
  /// be a name.
  std::string resolve(const std::string& name);
  /// The existing file or folder that the rest of a path leads to from a folder; nullopt when there is none.
  std::optional<std::string> find(const std::string& folder, std::string_view rest);
  /// The first folder that a folder's name leads to. The names of a group share few folders, each many components deep,
  /// so it is searched for once in a run.
  std::optional<std::string> firstFolder(const std::string& folder);
  /// The names in a folder that are the component but for their case, in order.
  std::vector<std::string> candidates(const std::string& folder, const std::string& component);

  /// What a folder holds, by upper-case name, and the time of its last change before it was listed.
  struct Listing {
    std::timespec changed{};
    bool settled = false;  // a later change has another time
    std::multimap<std::string, std::string> names;
  };
  const Listing& listing(const std::string& folder);
  /// Whether what is known of a folder is what it holds.
  bool isCurrent(const std::string& folder);
  /// Adds a file of our own making to what is known of its folder, so that a run which writes many files into one
  /// folder does not list it for each of them.
  void takeNote(const std::string& target);

  std::map<std::string, Listing> listings_;
  std::map<std::string, std::string> folders_;  // what firstFolder found
};

}  // namespace kiv
