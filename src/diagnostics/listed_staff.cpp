#include "diagnostics/listed_staff.h"

#include "analysis/cue_marker.h"
#include "base/number.h"

namespace kiv {

std::optional<ListedStaff> listedStaff(const PageWalker& page) {
  if (page.type() != ItemType::staff || page.par(par::lines) == hiddenStaff) {
    return std::nullopt;
  }
  const float number = page.par(par::staff);
  const float instrument = std::fabs(page.par(par::instrument));
  return ListedStaff{{page.itemsInFile(), page.itemOffset()},
                     number,
                     instrument,
                     generalNumber(number),
                     generalNumber(instrument),
                     page.par(par::position),
                     page.par(par::height)};
}

}  // namespace kiv
