#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kiv {

struct SelectedFile {
  std::string name;  ///< the full path, as the names file lists it
  std::wstring key;  ///< the full path as the person knows it, in capitals; it decides about order and sameness
};

/// The content of a names file with these files in natural order, each of them once.
std::string namesFileText(std::vector<SelectedFile> files);

/// The content of an answer file with the chosen folder; nullopt is for none.
std::string folderAnswerText(const std::optional<std::string>& folder);

}  // namespace kiv
