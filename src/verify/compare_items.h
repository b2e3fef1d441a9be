#pragma once

#include <string>
#include <vector>

#include "verify/finding.h"
#include "verify/page_items.h"
#include "verify/system_model.h"

namespace kiv::proof {

/// A result: what it must be, and what it is.
struct ResultPage {
  std::string name;
  ExpectedPage expected;
  LoadedPage found;
};

/// Holds the items of all results against what they must be. Every item that is changed, lost, doubled, added, or that
/// stands on another staff or in another result, is named with its origin.
std::vector<Finding> compareItems(const std::vector<ResultPage>& results);

/// Holds the bytes of a result whose items are right against those that it must have.
std::vector<Finding> compareBytes(const ResultPage& result);

}  // namespace kiv::proof
