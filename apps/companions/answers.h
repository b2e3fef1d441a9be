#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kiv {

struct SelectedFile {
  std::string name;  ///< the full path, as the names file lists it
  std::wstring key;  ///< the full path as the user sees it, in capitals; decides the order and what is the same file
};

/// The content of a names file with these files in natural order, each of them once.
std::string namesFileText(std::vector<SelectedFile> files);

/// The content of an answer file with the chosen folder; nullopt stands for none.
std::string folderAnswerText(const std::optional<std::string>& folder);

}  // namespace kiv
