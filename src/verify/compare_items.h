#pragma once

#include <string>
#include <vector>

#include "verify/finding.h"
#include "verify/page_items.h"
#include "verify/system_model.h"

namespace kiv::proof {

/// A result: as expected, and as found.
struct ResultPage {
  std::string name;
  ExpectedPage expected;
  LoadedPage found;
};

/// Compares the items of all results with the expected ones. Every item that is changed, lost, duplicated, added, on
/// another staff, or in another result is named with its origin.
std::vector<Finding> compareItems(const std::vector<ResultPage>& results);

/// Whether the result is, byte by byte, the expected page.
bool isAsExpected(const ResultPage& result);

/// Compares the bytes of a result whose items are as expected with the bytes of the expected page.
std::vector<Finding> compareBytes(const ResultPage& result);

}  // namespace kiv::proof
