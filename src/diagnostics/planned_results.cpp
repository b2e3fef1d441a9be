#include "diagnostics/planned_results.h"

#include <algorithm>
#include <cmath>

#include "base/number.h"
#include "mus/page_walker.h"

namespace kiv {

std::vector<PlannedStaff> stavesOfResult(std::string_view page, const std::set<std::int16_t>& present) {
  std::vector<PlannedStaff> staves;
  PageWalker walker(page);
  while (walker.findItem() == ReadStatus::itemRead) {
    if (walker.type() == ItemType::staff) {
      const float instrument = std::fabs(walker.par(par::instrument));
      const auto whole = toInt16(instrument);
      staves.push_back({walker.par(par::staff), instrument, !whole || !present.contains(*whole)});
    }
  }
  std::stable_sort(staves.begin(), staves.end(),
                   [](const PlannedStaff& a, const PlannedStaff& b) { return a.number > b.number; });
  return staves;
}

}  // namespace kiv
