#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "platform/files.h"
#include "platform/machine.h"
#include "verify/finding.h"

namespace kiv::proof {

/// What the names of results begin with, by that of the first one: number and suffix at its end are left out. Nullopt
/// when it is too short, or has no folder.
std::optional<std::string> stemOfResults(Machine& machine, const std::string& firstResultFile);
/// The name of the result of a system.
std::string resultName(const std::string& stem, std::size_t system);

/// What else the folder of the results holds.
struct StrayResults {
  std::vector<std::string> surplus;  ///< full names of files that are named like a result, but are none of these
  std::vector<Finding> doubled;      ///< results that exist in more than one spelling
};

/// Looks through the folder of the results, which have these names.
StrayResults strayResults(Files& files, Machine& machine, const std::string& firstResultFile,
                          const std::vector<std::string>& names);

}  // namespace kiv::proof
