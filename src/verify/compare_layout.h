#pragma once

#include <vector>

#include "verify/compare_items.h"
#include "verify/finding.h"

namespace kiv::proof {

/// Compares the results with each other: all must have the same instruments from staff 1 on, and in each result all
/// staves must have the same bars.
std::vector<Finding> compareLayout(const std::vector<ResultPage>& results);

}  // namespace kiv::proof
