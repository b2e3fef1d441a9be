#pragma once

#include <string>
#include <vector>

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
/// Files that the run has kept without a line in its journal: then lines are lost. One that is a second name of a file
/// beside the hidden folder is none of them: nothing was changed, and the computer was stopped before it had written
/// the line.
std::vector<std::string> unknownKeptFiles(const Journal& journal);
/// Removes what the run has kept, but not those files, then the hidden folders that are empty, and what it has left of
/// files that it was about to put in place when it was stopped.
void removeKeptFiles(const Journal& journal);

}  // namespace kiv
