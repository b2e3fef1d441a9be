#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/fetch.h"
#include "platform/file_stamp.h"

namespace kiv {

// Files and folders as the system knows them. Their names are the disk's own: with the system's separators, and read
// as they are, without a search regardless of case.

/// The identity of the file or folder that a path leads to, links followed; nullopt when there is none.
std::optional<FileIdentity> identityOf(const std::string& path);

/// The same of the file that standard input is; nullopt when it is none.
std::optional<FileIdentity> identityOfStandardInput();

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

/// What opening a file for reading shows.
struct ReadCheck {
  std::optional<std::string> failure;  ///< why it cannot be read as a file, in the system's words
  std::optional<FileStamp> stamp;      ///< nullopt when it cannot be opened, or the system does not say
};

/// Opens the file that a path leads to, and closes it. A pipe or a device is not waited for.
ReadCheck checkReadable(const std::string& path, Fetch fetch = Fetch::notWanted);

/// Why the path cannot be read as a file, in the system's words; nullopt when it can be.
inline std::optional<std::string> readFailure(const std::string& path) {
  return checkReadable(path).failure;
}

/// Why the file cannot be written, in the system's words; nullopt when it can be. It stays as it is.
std::optional<std::string> writeFailure(const std::string& path);

/// Why the folder cannot be listed, in the system's words; nullopt when it can be. Too many open files are no such
/// reason: they will end the run by themselves.
std::optional<std::string> listFailure(const std::string& folder);

/// The system's words for why the call before has failed; "" when it has not.
std::string lastCallFailure();

/// The bytes that are free for this user on the disk of a folder; nullopt when the system does not say.
std::optional<std::uint64_t> freeBytes(const std::string& folder);

/// Makes a folder, whose parent must exist, and waits until it is on the disk. Returns the system's text for the
/// failure.
[[nodiscard]] std::optional<std::string> makeFolder(const std::string& path);

}  // namespace kiv
