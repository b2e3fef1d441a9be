#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "verify/finding.h"
#include "verify/page_items.h"

namespace kiv::proof {

/// Compares the results with each other: all must have the same instruments from staff 1 on, and in each result all
/// staves must have the same bars.
class LayoutComparison {
 public:
  /// Adds the next result, as it was found.
  void add(const std::string& name, const LoadedPage& found);
  std::vector<Finding> findings() && { return std::move(findings_); }

 private:
  struct FirstResult {
    std::string name;
    std::string instruments;
  };

  std::optional<FirstResult> first_;
  std::vector<Finding> findings_;
};

}  // namespace kiv::proof
