#pragma once

#include <optional>
#include <vector>

#include "verify/compare_items.h"
#include "verify/finding.h"

namespace kiv::proof {

/// Results that have few of the items that they must carry are results of other pages, or are all missing: one finding
/// instead of one for each item.
std::optional<Finding> findOtherResults(const std::vector<ResultPage>& results);

}  // namespace kiv::proof
