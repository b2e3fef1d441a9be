#include "verify/other_results.h"

#include <algorithm>
#include <string>
#include <unordered_map>

namespace kiv::proof {
namespace {

constexpr std::size_t fewItems = 8;  // too few to decide by
constexpr std::size_t smallPart = 4;

/// The number of expected items that come from an input.
std::size_t carriedBy(const ExpectedPage& page) {
  return static_cast<std::size_t>(
      std::count_if(page.items.begin(), page.items.end(), [](const auto& item) { return item.origin.isInput(); }));
}

/// The number of these items that a result has, on whatever staff.
std::size_t foundIn(const ResultPage& result) {
  std::unordered_map<std::string, int> open;
  for (const PageItem& read : result.found.items) {
    ++open[itemKey(read.item)];
  }
  std::size_t found = 0;
  for (const ExpectedItem& expected : result.expected.items) {
    if (!expected.origin.isInput()) {
      continue;
    }
    const auto match = open.find(itemKey(expected.item));
    if (match != open.end() && match->second > 0) {
      --match->second;
      ++found;
    }
  }
  return found;
}

}  // namespace

std::optional<Finding> findOtherResults(const std::vector<ResultPage>& results) {
  std::size_t carried = 0;
  std::size_t found = 0;
  for (const ResultPage& result : results) {
    carried += carriedBy(result.expected);
    found += foundIn(result);
  }
  if (carried < fewItems || found * smallPart >= carried) {
    return std::nullopt;
  }
  const bool areMissing =
      std::all_of(results.begin(), results.end(), [](const ResultPage& result) { return result.found.bytes.empty(); });
  if (areMissing) {
    return Finding{results.front().name, 0,
                   results.size() == 1 ? "cannot be read" : "cannot be read, and no result after it can"};
  }
  return Finding{results.front().name, 0,
                 (results.size() == 1 ? "has " : "and the results after it have ") + std::to_string(found) +
                     " of the " + std::to_string(carried) +
                     " items that these pages give: the report is not that of these results"};
}

}  // namespace kiv::proof
