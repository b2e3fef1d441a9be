#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kiv {

/// The result of a dialog.
struct Choice {
  std::vector<std::wstring> paths;     ///< full ones; none after Cancel
  std::optional<std::string> failure;  ///< the system's words when the dialog did not work
};

/// Lets the user choose files of a type (a suffix without its period). The dialog starts in the first of the folders
/// that exists.
Choice chooseFiles(const std::string& type, const std::vector<std::string>& startFolders);

/// Lets the user choose one folder.
Choice chooseFolder(const std::string& prompt, const std::string& startFolder);

}  // namespace kiv
