#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/files.h"

namespace kiv {

// What keeps the old state of files, and puts it back. All names are the disk's, and are taken exactly: no link is
// followed unless that is said.

/// What a name itself is.
enum class EntryKind {
  missing,
  file,
  link,
  other,    ///< a folder, a device, a pipe
  unknown,  ///< the system does not say
};

EntryKind entryKindOf(const std::string& path);
/// Where a link leads to, as it is written; "" when that cannot be read.
std::string linkTextOf(const std::string& path);
/// Null when the file cannot be opened for reading.
std::unique_ptr<InputFile> openExactly(const std::string& path);

/// The full path of a file or folder, which need not exist, without links in the way to it; "" when the folder above
/// does not exist. A link at its end stays.
std::string realPath(const std::string& path);
/// The full path of a folder, without links; "" when there is none.
std::string realFolder(const std::string& path);
/// Whether a path is a full one, without "." and ".." in it.
bool isRealPath(const std::string& path);
/// The folder of a real path, without a separator at its end except for a root.
std::string folderAbove(const std::string& path);
/// A path in a folder.
std::string pathIn(const std::string& folder, const std::string& name);
/// The same text for all spellings of a path that the system takes for one.
std::string pathKey(const std::string& path);

/// Gives the file a second name, or makes a copy with its times and mode where that is not possible. There must be no
/// file of that name. Returns the failure's text; then there is none.
[[nodiscard]] std::optional<std::string> keepFile(const std::string& path, const std::string& kept);
/// Always makes a copy.
[[nodiscard]] std::optional<std::string> keepCopy(const std::string& path, const std::string& kept);
/// Puts the file in the place of another one, in one step. Two names of one file both stay. Returns the failure's text.
[[nodiscard]] std::optional<std::string> moveOver(const std::string& from, const std::string& to);
/// Makes a hidden folder, unless it is there. Returns the failure's text.
[[nodiscard]] std::optional<std::string> makeHiddenFolder(const std::string& path);
/// Makes a folder that is open to its owner only, and those above it that are missing. Returns the failure's text.
[[nodiscard]] std::optional<std::string> makePrivateFolders(const std::string& path);
/// Why the name cannot be removed; nullopt when it was, or is not there.
[[nodiscard]] std::optional<std::string> removeEntry(const std::string& path);
/// Removes a folder if it is empty.
void removeEmptyFolder(const std::string& path);
/// Waits until the folder's entries are on the disk. Returns the failure's text.
[[nodiscard]] std::optional<std::string> flushFolderAt(const std::string& folder);

/// Where programs keep the state of this user, without a separator at its end; "" when the system does not say.
std::string stateFolder();

}  // namespace kiv
