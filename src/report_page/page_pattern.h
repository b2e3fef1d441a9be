#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kiv::report {

/// The pattern for the names of files, as in "PIECE*.MUS", when it stands for these and for nothing else in their
/// folder. Names are without their folder and compared as they are.
std::optional<std::string> patternFor(const std::vector<std::string>& names, const std::vector<std::string>& folder);

}  // namespace kiv::report
