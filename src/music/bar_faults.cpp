#include "music/bar_faults.h"

#include <algorithm>
#include <set>
#include <span>

namespace kiv {
namespace {

using proof::StaffTime;

/// Whether two rests begin together, or a rest stands beside one that fills the whole bar.
bool hasTwoRests(std::span<const Item> items) {
  std::multiset<float> positions;
  bool anyWholeBar = false;
  for (const Item& item : items) {
    if (proof::takesTime(item, proof::longestRest)) {
      positions.insert(item[par::position]);
      anyWholeBar = anyWholeBar || proof::isWholeBarRest(item);
    }
  }
  const auto repeats = [&](float position) { return positions.count(position) > 1; };
  return (anyWholeBar && positions.size() > 1) || std::any_of(positions.begin(), positions.end(), repeats);
}

/// The lengths of the staves that play. Of equal ones, one says as much as all.
std::vector<StaffTime> timesThatCount(const proof::MusicBar& bar) {
  std::vector<StaffTime> times;
  for (const StaffTime& time : bar.times) {
    if (time.plays) {
      times.push_back({true, time.length, {}, {}});
    }
  }
  const auto isOther = [&](const StaffTime& time) { return time.length != times.front().length; };
  if (std::none_of(times.begin(), times.end(), isOther)) {
    times.resize(std::min<std::size_t>(times.size(), 1));
    times.shrink_to_fit();
  }
  return times;
}

}  // namespace

SystemBars barsOf(const proof::MusicSystem& system, const std::map<std::size_t, std::vector<Item>>& times,
                  const std::vector<proof::MusicStaff>& restStaves) {
  SystemBars bars;
  for (const proof::MusicBar& bar : system.bars()) {
    bars.times.push_back(timesThatCount(bar));
  }
  for (const proof::MusicStaff& staff : restStaves) {
    bars.rests.push_back({{staff.staff[par::staff], staff.instrument()}, {}});
    auto& own = bars.rests.back().second;
    for (const proof::MusicBar& bar : system.bars()) {
      const std::span<const Item> items = staff.between(bar.from, &bar.to);
      const StaffTime time = proof::staffTimeOf(items, proof::longestRest);
      own.push_back({time.plays, time.plays && hasTwoRests(items), time.length});
    }
  }
  for (const auto& [bar, items] : times) {
    bars.changes.emplace(bar, *proof::meterIn(items.back()));
  }
  return bars;
}

std::vector<UnequalBar> addRestFaults(const SystemBars& bars, proof::MusicMeter& meter, StaffFaults& faults) {
  std::vector<UnequalBar> unequal;
  for (std::size_t bar = 0; bar <= bars.times.size(); ++bar) {
    if (const auto change = bars.changes.find(bar); change != bars.changes.end()) {
      meter = change->second;
    }
    if (bar == bars.times.size()) {
      break;
    }
    const proof::Ticks music = proof::lengthOf(bars.times[bar], meter);
    if (!proof::isUnanimous(bars.times[bar], music)) {
      unequal.emplace_back(bar, music);
    }
    for (const auto& [staff, rests] : bars.rests) {
      const BarRests& own = rests[bar];
      if (!own.any) {
        faults[{bar, FaultKind::noRest}].push_back(staff);
      } else if (own.areTwo) {
        faults[{bar, FaultKind::twoRests}].push_back(staff);
      }
      if (own.any && !proof::isSameTime(own.length, music)) {
        faults[{bar, FaultKind::restLength, proof::inQuarters(own.length), proof::inQuarters(music)}].push_back(staff);
      }
    }
  }
  return unequal;
}

}  // namespace kiv
