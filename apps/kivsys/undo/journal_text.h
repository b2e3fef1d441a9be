#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

// The text of a run's journal: a head line, then a line for each folder that the run works in, each folder that it
// makes and each change of a file, in order and each before it is made. Each line is a JSON object. Paths are the
// disk's, full and without links.

/// What a file is, in words of the journal.
namespace file_state {
inline constexpr const char* missing = "missing";
/// Any file: the run was stopped while it wrote the file, so that nobody knows what it is.
inline constexpr const char* anything = "anything";
inline constexpr const char* linkStart = "link:";  ///< where the link leads to follows
inline constexpr const char* other = "other";      ///< what is no file and no link; never in a journal
}  // namespace file_state

/// A file that a run changes.
struct FileChange {
  std::string path;
  std::string before;               ///< the SHA-256 of the file as the run found it, or a file_state
  std::string kept;                 ///< the name in its folder's hidden folder that the old file has; "" when missing
  std::vector<std::string> states;  ///< what it can be after the run: SHA-256 or file_state

  bool operator==(const FileChange&) const = default;
};

/// A folder that a run works in.
struct JournalFolder {
  std::string path;
  std::string previous;  ///< the run whose files were kept for this folder until now; "" for none

  bool operator==(const JournalFolder&) const = default;
};

/// What a journal holds.
struct Journal {
  std::string id;
  std::string command;  ///< "convert"
  std::string time;     ///< local, when the run began: "2026-11-22 08:30:00"
  std::vector<JournalFolder> folders;
  std::vector<std::string> madeFolders;
  std::vector<FileChange> files;  ///< each once, in the order of their first change

  bool operator==(const Journal&) const = default;
};

/// The most bytes that are read of a journal.
constexpr std::size_t longestJournal = std::size_t{256} * 1024 * 1024;

/// Reads the text; nullopt when it is no journal, or a line in it is none. What follows the last line end is ignored:
/// the run was stopped while it wrote it, and so before the change.
std::optional<Journal> readJournal(std::string_view text);

/// The lines of a journal, with their ends.
std::string journalHead(const Journal& journal);
std::string folderLine(const JournalFolder& folder);
std::string madeFolderLine(const std::string& path);
/// The first change of a file; with one state.
std::string firstChangeLine(const FileChange& change);
/// A later change of the same file.
std::string laterChangeLine(const std::string& path, const std::string& state);
/// The last change of a file that was opened is complete: all that it is now.
std::string writtenLine(const std::string& path, const std::string& digest);

/// Whether the text is the name of a run: 16 hexadecimal digits.
bool isRunId(std::string_view text);
/// The name of the nth file that a run keeps.
std::string keptName(const std::string& run, std::size_t n);

}  // namespace kiv
