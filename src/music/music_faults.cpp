#include "music/music_faults.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "messages/music_warnings.h"
#include "music/result_music.h"
#include "music/staff_faults.h"

namespace kiv {
namespace {

/// What a conversion has added to a system.
struct AddedMusic {
  std::vector<proof::MusicStaff> restStaves;
  std::vector<FaultPlace> displacedBraces;
};

bool isOfWholeStaff(const Fault& fault) {
  return fault.kind == FaultKind::clef || fault.kind == FaultKind::lateEntry;
}

/// Puts the faults of all results into words.
class FaultFinder {
 public:
  FaultFinder(const std::vector<CheckedResult>& results, const proof::MusicGroup& group)
      : results_(results), group_(group) {}

  void add(std::size_t system, const AddedMusic& result) {
    const bool restsMatter = !result.restStaves.empty();
    if (restsMatter && !group_.hasTime() && !group_.bars(system).empty() && !saidTime_) {
      saidTime_ = true;
      faults_.push_back({messages::noTimeSignature(locationOf(system)), system, {}});
    }
    isKeyShown_ = isKeyShown_ || !group_.keys().isHidden(system);
    if (restsMatter && isKeyShown_ && group_.keys().isHidden(system)) {
      isKeyShown_ = false;
      faults_.push_back({messages::keyNotShown(locationOf(system)), system, {}});
    }
    if (!result.displacedBraces.empty()) {
      const auto count = static_cast<int>(result.displacedBraces.size());
      faults_.push_back({messages::braceDisplaced(count, locationOf(system)), system, result.displacedBraces});
    }
    if (restsMatter) {
      addTooLong(system, result);
      addBars(system, result, findFaults(group_, system, result.restStaves));
    }
  }

  std::vector<MusicFault> take() { return std::move(faults_); }

  Location locationOf(std::size_t system) const {
    Location location{.file = results_[system].file};
    location.system = static_cast<std::int16_t>(system + 1);
    return location;
  }

 private:
  void addTooLong(std::size_t system, const AddedMusic& result) {
    for (const auto& bar : group_.systems()[system].tooLong()) {
      Location location = locationOf(system);
      location.bar = bar ? std::optional(static_cast<int>(*bar) + 1) : std::nullopt;
      faults_.push_back({messages::durationTooLong(proof::longestNote, location), system,
                         bar ? placesOfBar(system, result, *bar) : std::vector<FaultPlace>()});
    }
  }

  void addBars(std::size_t system, const AddedMusic& result, const StaffFaults& faults) {
    auto fault = faults.begin();
    const auto& bars = group_.bars(system);
    for (std::size_t bar = 0; bar < bars.size() || fault != faults.end(); ++bar) {
      if (bar < bars.size() && !bars[bar].isUnanimous) {
        Location location = locationOf(system);
        location.bar = static_cast<int>(bar) + 1;
        faults_.push_back({messages::stavesDisagree(proof::inQuarters(bars[bar].length), location), system,
                           placesOfBar(system, result, bar)});
      }
      for (; fault != faults.end() && fault->first.bar == bar; ++fault) {
        faults_.push_back({messageOf(system, fault->first, fault->second), system, placesOf(system, *fault)});
      }
    }
  }

  /// The bar on all staves, which last unequally long.
  std::vector<FaultPlace> placesOfBar(std::size_t system, const AddedMusic& result, std::size_t bar) const {
    const proof::MusicSystem& music = group_.systems()[system];
    if (bar >= music.bars().size()) {
      return {};
    }
    const std::pair<float, float> ends{music.bars()[bar].from, music.bars()[bar].to};
    std::vector<FaultPlace> places;
    for (const auto* staves : {&result.restStaves, &music.staves()}) {
      for (const proof::MusicStaff& staff : *staves) {
        places.push_back({staff.staff[par::staff], ends});
      }
    }
    return places;
  }

  std::vector<FaultPlace> placesOf(std::size_t system, const StaffFaults::value_type& fault) const {
    const auto& bars = group_.systems()[system].bars();
    std::vector<FaultPlace> places;
    for (const proof::MusicStaff* staff : fault.second) {
      FaultPlace& place = places.emplace_back(FaultPlace{staff->staff[par::staff], {}});
      if (!isOfWholeStaff(fault.first) && fault.first.bar < bars.size()) {
        place.bar = {bars[fault.first.bar].from, bars[fault.first.bar].to};
      }
    }
    return places;
  }

  Message messageOf(std::size_t system, const Fault& fault, const std::vector<const proof::MusicStaff*>& staves) const {
    messages::RestStavesOf instruments;
    for (const proof::MusicStaff* staff : staves) {
      instruments.push_back(staff->instrument());
    }
    Location location = locationOf(system);
    location.staff = staves.front()->staff[par::staff];
    location.instrument = instruments.front();
    if (isOfWholeStaff(fault)) {
      return fault.kind == FaultKind::clef ? messages::clefDiffers(instruments, location)
                                           : messages::lateEntryUnknown(instruments, location);
    }
    location.bar = static_cast<int>(fault.bar) + 1;
    switch (fault.kind) {
      case FaultKind::twoRests:
        return messages::barTwoRests(instruments, location);
      case FaultKind::noRest:
        return messages::barWithoutRest(instruments, location);
      case FaultKind::key:
        return messages::keyDiffers(instruments, location);
      case FaultKind::time:
        return messages::timeDiffers(instruments, location);
      default:
        return messages::barRestLength(instruments, fault.rest, fault.music, location);
    }
  }

  const std::vector<CheckedResult>& results_;
  const proof::MusicGroup& group_;
  bool saidTime_ = false;
  bool isKeyShown_ = true;  // since the last warning that it is not
  std::vector<MusicFault> faults_;
};

}  // namespace

std::vector<MusicFault> findMusicFaults(Files& files, const std::vector<CheckedResult>& results) {
  std::vector<AddedMusic> read;
  std::vector<proof::MusicSystem> systems;
  for (const CheckedResult& result : results) {
    auto music = readResult(files, result);
    if (!music) {
      break;
    }
    systems.push_back(std::move(music->real));
    read.push_back({std::move(music->restStaves), std::move(music->displacedBraces)});
  }
  const proof::MusicGroup group(std::move(systems));
  FaultFinder finder(results, group);
  for (std::size_t system = 0; system < read.size(); ++system) {
    finder.add(system, read[system]);
  }
  std::vector<MusicFault> faults = finder.take();
  if (read.size() < results.size()) {  // the others may have one
    std::erase_if(faults, [](const MusicFault& fault) { return fault.warning.code == code::noTimeSignature; });
    faults.insert(faults.begin(), {messages::resultsNotChecked(finder.locationOf(read.size())), read.size(), {}});
  }
  return faults;
}

}  // namespace kiv
