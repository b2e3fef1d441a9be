#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// The sign in a message box. Critical boxes end the program; the others only inform or ask.
enum class Icon { none, information, exclamation, critical };
enum class Buttons { ok, yesNo };
enum class Answer { ok, yes, no };

enum class Pointer { normal, hourglass };

/// How a started program's window is shown.
enum class ShowState { leftToTheSystem, maximised };
enum class WindowStyle : int { normal = 1, maximised = 3 };

/// Why the scripting shell did not run a program.
struct ShellFailure {
  std::int32_t number = 0;  ///< as a script is told it: a small one of the script's own, or the platform's, negative
  std::string text;         ///< the platform's words

  bool operator==(const ShellFailure&) const = default;
};

/// The failures that end a run without a message of their own.
enum class RunTimeError { subscriptOutOfRange, overflow, typeMismatch, divisionByZero };

/// The end of the program. Thrown by Host::fatal and where a procedure ends the program in good order;
/// caught only by the mains and by tests.
struct ProgramEnd {
  int exitCode = 0;  ///< 0 after a normal end, 1 after a critical box
};

/// Local date and time of day, 24 hours.
struct LocalTime {
  int year = 0;
  int month = 0;
  int day = 0;
  int hour = 0;
  int minute = 0;
  int second = 0;
};

struct FolderEntry {
  std::string name;
  bool isFolder = false;
};

/// A file open for reading, closed by its destructor.
class InputFile {
 public:
  InputFile() = default;
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;
  virtual ~InputFile() = default;

  /// Reads up to room.size() bytes from where the last read ended. Returns how many came; 0 at the end of the
  /// file, nullopt when the medium fails.
  virtual std::optional<std::size_t> read(std::span<char> room) = 0;

  /// Tells the system that the file will be read soon, so that it may fetch it from the disk while other work is done.
  /// A hint; it changes nothing else.
  virtual void announce() {}
};

/// A file open for writing, closed by its destructor. What was written is with the system when write returns.
class OutputFile {
 public:
  OutputFile() = default;
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;
  virtual ~OutputFile() = default;

  /// Appends the bytes. Returns the platform's text for the failure, nullopt when all of them were taken.
  [[nodiscard]] virtual std::optional<std::string> write(std::string_view bytes) = 0;
};

/// The only way from the core to the world: the person, the disk, the clock, other programs.
///
/// File names are the system's own: backslashes between folders, relative names in the current folder, bytes of
/// the ANSI code page on Windows and UTF-8 elsewhere.
class Host {
 public:
  Host() = default;
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;
  virtual ~Host() = default;

  // --- the person ---

  /// Shows a modal box titled "KivSystem" and returns the button that closed it. Lines of text end with CR LF.
  virtual Answer message(Icon icon, std::string_view text, Buttons buttons) = 0;
  /// Shows the text file in the host's own way. False when the host has none and a viewer program is to be started.
  virtual bool showText(const std::string& name) = 0;
  virtual void setPointer(Pointer pointer) = 0;
  /// Gives the user interface a chance to repaint and to take events.
  virtual void processEvents() = 0;
  /// Tells how far a long run has come: so many done of all, of what the plural names ("pages").
  virtual void showProgress(int done, int all, std::string_view plural) = 0;

  // --- files ---

  /// Null when the file cannot be opened for reading; a folder cannot.
  virtual std::unique_ptr<InputFile> openInput(const std::string& name) = 0;
  /// Opens the file empty, replacing what it held. Null when it cannot be opened for writing.
  virtual std::unique_ptr<OutputFile> openOutput(const std::string& name) = 0;
  /// Puts a file of these bytes in the place of the named one, so that at every moment the old or the new one is
  /// there whole. Returns the platform's text for the failure.
  [[nodiscard]] virtual std::optional<std::string> replaceFile(const std::string& name, std::string_view bytes) = 0;
  /// False when there is no such file or it cannot be deleted.
  virtual bool deleteFile(const std::string& name) = 0;
  /// The entries of a folder (its name ends with a backslash) in the platform's order, "." and ".." included where
  /// the platform lists them. Empty when it cannot be listed.
  virtual std::vector<FolderEntry> listFolder(const std::string& folder) = 0;
  /// The current folder, without a trailing backslash except for a root.
  virtual std::string currentFolder() = 0;
  /// The short (8.3) form of the path, nullopt when the platform has none.
  virtual std::optional<std::string> shortName(const std::string& path) = 0;

  // --- the machine ---

  virtual LocalTime now() = 0;
  /// Upper case as the platform maps the code page; what has no capital stays.
  virtual std::string upperCase(std::string_view text) = 0;
  /// How many characters the bytes of a text are.
  virtual std::size_t characterCount(std::string_view text) = 0;
  /// The key's value in section [KIV] of the user's profile, at most 31 characters, "" when absent.
  virtual std::string profileKey(const std::string& key) = 0;
  /// Starts the command line as a process and waits for its end. Returns its exit code, -1 when it does not start.
  virtual std::int32_t runProcess(const std::string& commandLine, ShowState show) = 0;
  /// Runs the command through the scripting shell and waits for its end. Returns the failure.
  [[nodiscard]] virtual std::optional<ShellFailure> runInShell(const std::string& command, WindowStyle style) = 0;

  // --- built on the above ---

  void inform(std::string_view text) { message(Icon::information, text, Buttons::ok); }
  /// Shows a critical box and ends the program.
  [[noreturn]] void fatal(std::string_view text);
  /// Ends the program over a run-time error; workedOn names the MUS file and item, or the report line.
  [[noreturn]] void runTimeError(RunTimeError error, std::string_view workedOn);
  /// The same for a failure that the platform has words for.
  [[noreturn]] void runTimeError(std::string_view platformText, std::string_view workedOn);
};

/// The whole content of a file, at most limit bytes of it; nullopt when it cannot be opened or read.
std::optional<std::string> readWhole(Host& host, const std::string& name, std::size_t limit = SIZE_MAX);

}  // namespace kiv
