#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/files.h"
#include "platform/machine.h"
#include "verify/finding.h"

namespace kiv::proof {

/// The page files that a names file selects.
struct SelectedFiles {
  std::vector<std::string> names;  ///< full names in upper case, in the order of selection
  std::optional<Finding> failure;  ///< why no analysis gets past this selection
};

/// Reads a names file by the rules for such files. It is neither changed nor deleted, whatever it lists.
SelectedFiles selectedFilesOf(Files& files, Machine& machine, const std::string& namesFile);

}  // namespace kiv::proof
