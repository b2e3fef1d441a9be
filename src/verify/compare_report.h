#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "verify/finding.h"

namespace kiv::proof {

/// Compares a report, or a verdict, with the one that an analysis gives today. In a report's head line the digits of
/// version, date and time may differ. At most 20 lines that differ are reported.
std::vector<Finding> compareText(const std::string& name, std::string_view found, std::string_view expected);

}  // namespace kiv::proof
