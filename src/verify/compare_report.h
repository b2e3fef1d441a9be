#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "verify/finding.h"

namespace kiv::proof {

/// Compares a report with the derived one. Of the first line of a report, the numbers in version, date and time may be
/// any. A report of other pages, or one of which more than a few lines differ, is one finding; otherwise each line is.
std::vector<Finding> compareReport(const std::string& name, std::string_view found, std::string_view expected);

/// Compares a verdict with the derived one, line by line.
std::vector<Finding> compareVerdict(const std::string& name, std::string_view found, std::string_view expected);

}  // namespace kiv::proof
