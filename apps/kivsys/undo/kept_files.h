#pragma once

#include <string>

#include "apps/kivsys/undo/journal_text.h"

namespace kiv {

/// What the file is, as journals write it: its SHA-256, or a file_state.
std::string stateOf(const std::string& path);

/// The name of the hidden folder in which the replaced files of a folder are kept.
inline constexpr const char* keptFolderName = ".kivsys";
/// That folder of a folder.
std::string keptFolderOf(const std::string& folder);
/// Where the old file of a change is kept.
std::string keptPathOf(const FileChange& change);
/// Removes all that the run has kept, one file more than its journal knows included: the run may have been stopped
/// before it wrote the line. Removes the hidden folders that are empty then.
void removeKeptFiles(const Journal& journal);

}  // namespace kiv
