#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "platform/host.h"

namespace kiv::proof {

/// The names of so many results, by that of the first one: number and suffix at its end are replaced. Nullopt when it
/// is too short for them.
std::optional<std::vector<std::string>> resultNames(Host& host, const std::string& firstResultFile, std::size_t count);

/// The files in the folder of the results that are named like one, with a number that none of these has.
std::vector<std::string> surplusResults(Host& host, const std::string& firstResultFile,
                                        const std::vector<std::string>& names);

}  // namespace kiv::proof
