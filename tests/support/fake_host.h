#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <iosfwd>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/host.h"
#include "platform/memory/overlay_files.h"

namespace kiv {

void PrintTo(const Location& location, std::ostream* out);
void PrintTo(const Message& message, std::ostream* out);

}  // namespace kiv

namespace kiv::test {

/// What a message box shows of a message.
struct Message {
  Icon icon = Icon::none;
  std::string text;
  Buttons buttons = Buttons::ok;

  bool operator==(const Message&) const = default;
};

inline Message information(std::string text) {
  return {Icon::information, std::move(text), Buttons::ok};
}
inline Message critical(std::string text) {
  return {Icon::critical, std::move(text), Buttons::ok};
}

void PrintTo(const Message& message, std::ostream* out);

/// A host in memory: a disk whose names are compared regardless of case, scripted answers, and a record of every call
/// that the outside world would notice. It goes wherever Host or one of its parts is wanted.
class FakeHost : public Machine, public User, public Programs, public OverlayFiles {
 public:
  FakeHost() : OverlayFiles("C:\\KIV", static_cast<Machine&>(*this)) {}

  operator Host() { return {*this, *this, *this, *this}; }  // NOLINT(google-explicit-constructor)

  // --- what the test prepares, besides addFile ---
  std::string& folder = currentFolder_;           ///< the current folder
  std::map<std::string, std::string> shortNames;  ///< long path to short path
  std::map<std::string, std::string> profile;
  std::vector<FolderEntry> folderEntries;  ///< what every folder lists
  std::deque<Answer> answers;              ///< for the Yes/No questions to come; Yes when there is none left
  std::set<std::string> unwritable;        ///< names that cannot be created, written or deleted
  std::int32_t exitCode = 0;               ///< of every started process
  std::optional<ShellFailure> shellFailure;
  std::set<char> leadBytes;                        ///< of the two-byte characters of the code page
  bool showsTexts = false;                         ///< the host has its own way to show a text file
  std::optional<std::string> writeFailure;         ///< what every write fails with
  std::function<void(const Message&)> whileShown;  ///< runs while a message is shown
  std::function<bool()> makesOutline;              ///< of an expected file, now; asked at once, and when it is opened
  LocalTime time{1994, 3, 7, 5, 8, 9};

  // --- what the test looks at ---
  std::vector<Message> messages;
  std::vector<kiv::Message> shown;    ///< the same messages with their codes and locations
  std::vector<std::string> calls;     ///< everything else, in order: "run Notepad X", "delete X", "pointer hourglass"
  std::vector<std::string> progress;  ///< "1/5 pages"
  bool hasFile(const std::string& name) const { return find(name) != nullptr; }
  /// The file's content; "(no file)" when there is none.
  std::string file(const std::string& name) const;
  /// Everything on the disk, by full name in capitals.
  std::map<std::string, std::string> files() const;
  /// How often a file was opened for reading.
  int timesRead(const std::string& name) const;

  // --- Files ---
  std::unique_ptr<InputFile> openInput(const std::string& name) override;
  void expectReading(const std::vector<std::string>& names, FileOutliner* outliner) override;
  std::unique_ptr<OutputFile> openOutput(const std::string& name) override;
  std::optional<std::string> replaceFile(const std::string& name, std::string_view bytes) override;
  bool deleteFile(const std::string& name) override;
  std::vector<FolderEntry> listFolder(const std::string& listed) override;
  std::optional<std::string> shortName(const std::string& path) override;

  // --- User ---
  Answer show(const kiv::Message& message) override;
  bool showText(const std::string& name) override;
  void setPointer(Pointer pointer) override;
  void processEvents() override { calls.emplace_back("events"); }
  void showProgress(int done, int all, std::string_view plural) override;

  // --- Programs ---
  std::int32_t runProcess(const std::string& commandLine, ShowState show) override;
  std::optional<ShellFailure> runInShell(const std::string& command, WindowStyle style) override;

  // --- Machine ---
  LocalTime now() override { return time; }
  std::string upperCase(std::string_view text) override;
  std::size_t characterCount(std::string_view text) override { return text.size(); }
  bool isLeadByte(char byte) override { return leadBytes.contains(byte); }
  std::string profileKey(const std::string& name) override;

 private:
  std::unique_ptr<FileOutline> outlineOf(const std::string& name);

  std::map<std::string, int> reads_;
  std::multimap<std::string, std::unique_ptr<FileOutline>> expected_;  // by name; null while there is no outline
  FileOutliner* outliner_ = nullptr;
};

/// Runs a piece of the program, and shows the user the critical message that ends it. Returns the exit code that it
/// ended the program with, nullopt when it did not.
std::optional<int> endOf(User& user, const std::function<void()>& run);

}  // namespace kiv::test
