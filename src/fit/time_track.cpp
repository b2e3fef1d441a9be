#include "fit/time_track.h"

#include <algorithm>
#include <utility>

namespace kiv::fit {
namespace {

/// The time signatures of one staff that count from one bar on.
using StaffTimes = std::vector<Item>;

std::map<std::size_t, StaffTimes> timesOf(const Staff& staff, const System& system) {
  std::map<std::size_t, StaffTimes> times;
  for (const Item& item : staff.items) {
    if (item.type() == ItemType::timeSignature && meterOf(item).isKnown()) {
      times[system.barAfter(item[par::position])].push_back(item);
    }
  }
  return times;
}

TimeChange commonest(const std::vector<StaffTimes>& staves) {
  const auto votes = [&](const StaffTimes& times) {
    return std::count_if(staves.begin(), staves.end(),
                         [&](const StaffTimes& other) { return meterOf(other.back()) == meterOf(times.back()); });
  };
  // The first of several with as many votes, which is the highest staff.
  const auto best = std::max_element(staves.begin(), staves.end(),
                                     [&](const StaffTimes& a, const StaffTimes& b) { return votes(a) < votes(b); });
  return {meterOf(best->back()), *best};
}

}  // namespace

TimeChanges timeChangesOf(const System& system) {
  std::map<std::size_t, std::vector<StaffTimes>> byBar;
  for (const Staff& staff : system.staves) {
    for (auto& [bar, times] : timesOf(staff, system)) {
      byBar[bar].push_back(times);
    }
  }
  TimeChanges changes;
  for (const auto& [bar, staves] : byBar) {
    changes.emplace(bar, commonest(staves));
  }
  return changes;
}

}  // namespace kiv::fit
