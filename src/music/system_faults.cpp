#include "music/system_faults.h"

#include <cstdint>

#include "messages/music_warnings.h"

namespace kiv {
namespace {

bool isOfWholeStaff(const Fault& fault) {
  return fault.kind == FaultKind::clef || fault.kind == FaultKind::lateEntry;
}

/// Puts the faults of one result into words.
class FaultWords {
 public:
  FaultWords(const SystemPlaces& places, const std::string& file, std::size_t index, std::vector<MusicFault>& all)
      : places_(places), system_{.file = file}, index_(index), all_(all) {
    system_.system = static_cast<std::int16_t>(index + 1);
  }

  void add(const SystemFaults& faults) {
    if (faults.lacksTime) {
      add(messages::noTimeSignature(system_), {});
    }
    if (faults.hidesKey) {
      add(messages::keyNotShown(system_), {});
    }
    if (!faults.displacedBraces.empty()) {
      const auto count = static_cast<int>(faults.displacedBraces.size());
      add(messages::braceDisplaced(count, system_), faults.displacedBraces);
    }
    for (const auto& bar : faults.tooLong) {
      add(messages::durationTooLong(proof::longestNote, bar ? locationOf(*bar) : system_),
          bar ? placesOfBar(*bar) : std::vector<FaultPlace>());
    }
    addBars(faults);
  }

 private:
  void add(Message warning, std::vector<FaultPlace> places) {
    all_.push_back({std::move(warning), index_, std::move(places)});
  }

  Location locationOf(std::size_t bar) const {
    Location location = system_;
    location.bar = static_cast<int>(bar) + 1;
    return location;
  }

  void addBars(const SystemFaults& faults) {
    auto fault = faults.staves.begin();
    const auto addUpTo = [&](std::optional<std::size_t> bar) {
      for (; fault != faults.staves.end() && (!bar || fault->first.bar < *bar); ++fault) {
        add(messageOf(fault->first, fault->second), placesOf(*fault));
      }
    };
    for (const auto& [bar, length] : faults.unequal) {
      addUpTo(bar);
      add(messages::stavesDisagree(proof::inQuarters(length), locationOf(bar)), placesOfBar(bar));
    }
    addUpTo(std::nullopt);
  }

  /// The bar on all staves, which last unequally long.
  std::vector<FaultPlace> placesOfBar(std::size_t bar) const {
    std::vector<FaultPlace> places;
    for (const float staff : bar < places_.bars.size() ? places_.staves : std::vector<float>()) {
      places.push_back({staff, places_.bars[bar]});
    }
    return places;
  }

  std::vector<FaultPlace> placesOf(const StaffFaults::value_type& fault) const {
    std::vector<FaultPlace> places;
    for (const RestStaff& staff : fault.second) {
      FaultPlace& place = places.emplace_back(FaultPlace{staff.number, {}});
      if (!isOfWholeStaff(fault.first) && fault.first.bar < places_.bars.size()) {
        place.bar = places_.bars[fault.first.bar];
      }
    }
    return places;
  }

  Message messageOf(const Fault& fault, const std::vector<RestStaff>& staves) const {
    messages::RestStavesOf instruments;
    for (const RestStaff& staff : staves) {
      instruments.push_back(staff.instrument);
    }
    Location location = isOfWholeStaff(fault) ? system_ : locationOf(fault.bar);
    location.staff = staves.front().number;
    location.instrument = instruments.front();
    switch (fault.kind) {
      case FaultKind::clef:
        return messages::clefDiffers(instruments, location);
      case FaultKind::lateEntry:
        return messages::lateEntryUnknown(instruments, location);
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

  const SystemPlaces& places_;
  Location system_;
  std::size_t index_;
  std::vector<MusicFault>& all_;
};

}  // namespace

SystemPlaces placesIn(const proof::MusicSystem& system, const std::vector<proof::MusicStaff>& restStaves) {
  SystemPlaces places;
  for (const proof::MusicBar& bar : system.bars()) {
    places.bars.emplace_back(bar.from, bar.to);
  }
  for (const auto* staves : {&restStaves, &system.staves()}) {
    for (const proof::MusicStaff& staff : *staves) {
      places.staves.push_back(staff.staff()[par::staff]);
    }
  }
  return places;
}

void addInWords(const SystemFaults& faults, const SystemPlaces& places, const std::string& file, std::size_t index,
                std::vector<MusicFault>& all) {
  FaultWords(places, file, index, all).add(faults);
}

}  // namespace kiv
