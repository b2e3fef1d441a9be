#include "music/bar_faults.h"

#include <algorithm>
#include <iterator>
#include <span>

namespace kiv {
namespace {

using proof::StaffTime;

/// Whether two rests begin together, or a rest stands beside one that fills the whole bar. They come by position.
bool hasTwoRests(std::span<const proof::MusicNote> notes) {
  const proof::MusicNote* before = nullptr;
  bool areTwo = false;
  bool areTogether = false;
  bool anyWholeBar = false;
  for (const proof::MusicNote& note : notes) {
    if (proof::takesTime(note, proof::longestRest)) {
      areTwo = before != nullptr;
      areTogether = areTogether || (areTwo && before->position == note.position);
      anyWholeBar = anyWholeBar || proof::isWholeBarRest(note);
      before = &note;
    }
  }
  return areTogether || (areTwo && anyWholeBar);
}

/// The lengths of the staves that play. Of equal ones, one says as much as all.
std::vector<StaffTime> timesThatCount(const proof::MusicBar& bar) {
  const auto plays = [](const StaffTime& time) { return time.plays; };
  const auto first = std::find_if(bar.times.begin(), bar.times.end(), plays);
  if (first == bar.times.end()) {
    return {};
  }
  const auto isOther = [&](const StaffTime& time) { return time.plays && time.length != first->length; };
  if (std::none_of(first, bar.times.end(), isOther)) {
    return {*first};
  }
  std::vector<StaffTime> times;
  std::copy_if(first, bar.times.end(), std::back_inserter(times), plays);
  return times;
}

}  // namespace

SystemBars barsOf(const proof::MusicSystem& system, const std::map<std::size_t, std::vector<Item>>& times,
                  const std::vector<proof::MusicStaff>& restStaves) {
  SystemBars bars;
  bars.times.reserve(system.bars().size());
  for (const proof::MusicBar& bar : system.bars()) {
    bars.times.push_back(timesThatCount(bar));
  }
  proof::BarClock clock(proof::longestRest);
  for (const proof::MusicStaff& staff : restStaves) {
    bars.rests.push_back({{staff.staff()[par::staff], staff.instrument()}, {}});
    auto& own = bars.rests.back().second;
    own.reserve(system.bars().size());
    for (const proof::MusicBar& bar : system.bars()) {
      const auto notes = staff.notesBetween(bar.from, &bar.to);
      const StaffTime time = clock.timeOf(notes);
      own.push_back({time.plays, time.plays && hasTwoRests(notes), time.length});
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
