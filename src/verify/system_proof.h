#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "verify/expected_pages.h"
#include "verify/finding.h"
#include "verify/page_items.h"
#include "verify/verify.h"

namespace kiv::proof {

/// Results of which every byte is as expected.
struct ProvedResults {
  Counts counts;                ///< only those of items, without the ones that are left out
  std::vector<Finding> layout;  ///< how the results differ from each other
};

/// The full name of the result of a system, and what is found under it.
struct FoundResult {
  std::string name;
  LoadedPage page;
};

/// Loads the result of a system by its index.
using ResultLoader = std::function<FoundResult(std::size_t)>;

/// Compares one result after the other with what is expected, so that only one of them is in memory. nullopt when a
/// system cannot be converted or a result is not as expected: what the difference is shows only among all results.
std::optional<ProvedResults> proveSystemBySystem(const ReportedSystems& reported, bool showNumbers,
                                                 const ResultLoader& load, const SystemProgress& progress);

/// Adds the items of a result.
void countItems(const ExpectedPage& page, Counts& counts);

}  // namespace kiv::proof
