#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kiv {

/// A file that cannot be written or opened.
struct FileFailure {
  std::string file;    ///< its path, as far as the ANSI code page can hold it
  std::string reason;  ///< in the system's words
};

/// Writes a page into a new file in the user's folder for temporary files, and lets the system open it with the program
/// that the user has chosen for pages. Nobody can guess the file's name, and no other file is ever replaced. It stays
/// for as long as the user's system keeps such files, since the other program may need it again.
[[nodiscard]] std::optional<FileFailure> openAsTemporaryPage(std::string_view page);

}  // namespace kiv
