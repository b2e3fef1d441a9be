#include "verify/system_proof.h"

#include <utility>

#include "verify/compare_items.h"
#include "verify/compare_layout.h"

namespace kiv::proof {

std::optional<ProvedResults> proveSystemBySystem(const ReportedSystems& reported, bool showNumbers,
                                                 const ResultLoader& load, const SystemProgress& progress) {
  ProvedResults proved;
  LayoutComparison layout;
  bool isProved = true;
  const std::string error = deriveExpectedPages(reported, showNumbers, progress, [&](std::size_t i, ExpectedPage page) {
    FoundResult found = load(i);
    const ResultPage result{std::move(found.name), std::move(page), std::move(found.page)};
    isProved = isAsExpected(result);
    if (isProved) {
      layout.add(result.name, result.found);
      countItems(result.expected, proved.counts);
    }
    return isProved;
  });
  if (!isProved || !error.empty()) {
    return std::nullopt;
  }
  proved.layout = std::move(layout).findings();
  return proved;
}

void countItems(const ExpectedPage& page, Counts& counts) {
  counts.barlines += page.barlines;
  for (const ExpectedItem& item : page.items) {
    ++(item.origin.isInput() ? counts.carried : counts.added);
  }
}

}  // namespace kiv::proof
