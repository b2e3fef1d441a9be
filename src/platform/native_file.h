#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>

namespace kiv {

// Files and folders as the system knows them. Their names are the disk's own: with the system's separators, and read
// as they are, without a search regardless of case.

/// What makes a file this one, whatever its name: the same for all its names, links and spellings.
struct FileIdentity {
  std::uint64_t volume = 0;
  std::uint64_t file = 0;

  auto operator<=>(const FileIdentity&) const = default;  // NOLINT(modernize-use-nullptr)
};

/// The identity of the file or folder that a path leads to, links followed; nullopt when there is none.
std::optional<FileIdentity> identityOf(const std::string& path);

/// The same of the file that standard input is; nullopt when it is none.
std::optional<FileIdentity> identityOfStandardInput();

/// By this a file that has changed differs from the one that it was.
struct FileStamp {
  FileIdentity identity;
  std::uint64_t size = 0;
  std::int64_t changed = 0;  ///< the time of its last change, in the system's own unit

  bool operator==(const FileStamp&) const = default;
};

/// The stamp of the file that a path leads to, links followed; nullopt when there is none.
std::optional<FileStamp> stampOf(const std::string& path);

enum class PathKind {
  missing,  ///< or out of reach
  file,
  folder,
  device,  ///< a pipe too: what is written to, and never replaced
};

/// What a path leads to, links followed.
PathKind kindOf(const std::string& path);

/// Why the path cannot be read as a file, in the system's words; nullopt when it can be.
std::optional<std::string> readFailure(const std::string& path);

/// Why the file cannot be written, in the system's words; nullopt when it can be. It stays as it is.
std::optional<std::string> writeFailure(const std::string& path);

/// Why the folder cannot be listed, in the system's words; nullopt when it can be. Too many open files are no such
/// reason: they will end the run by themselves.
std::optional<std::string> listFailure(const std::string& folder);

/// The system's words for why the call before has failed; "" when it has not.
std::string lastCallFailure();

/// Makes a folder, whose parent must exist, and waits until it is on the disk. Returns the system's text for the
/// failure.
[[nodiscard]] std::optional<std::string> makeFolder(const std::string& path);

}  // namespace kiv
