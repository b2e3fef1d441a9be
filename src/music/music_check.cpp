#include "music/music_check.h"

#include <cstdint>

#include "messages/music_warnings.h"

namespace kiv {

void MusicCheck::add(const ResultMusic& music) {
  const std::size_t system = count_++;
  keys_.read(music.real);
  entries_.read(music.real);
  if (wantsPlaces_) {
    places_.push_back(placesIn(music.real, music.restStaves));
  }
  if (!music.displacedBraces.empty()) {
    faults_[system].displacedBraces = music.displacedBraces;
  }
  const auto times = proof::timesOf(music.real);
  SystemBars bars = barsOf(music.real, times, music.restStaves);
  if (!music.restStaves.empty()) {
    addRestStaves(music, times, system);
    firstWithRests_ = firstWithRests_ || bars.times.empty() ? firstWithRests_ : std::optional(system);
  }
  if (!meter_ && !bars.changes.empty()) {
    meter_ = bars.changes.begin()->second;
    addWaitingRests();
  }
  if (meter_) {
    addRests(bars, system);
  } else if (!music.restStaves.empty()) {
    waiting_.emplace(system, std::move(bars));
  }
}

/// Adds what does not depend on the lengths of bars.
void MusicCheck::addRestStaves(const ResultMusic& music, const std::map<std::size_t, std::vector<Item>>& times,
                               std::size_t system) {
  for (const proof::MusicStaff& staff : music.restStaves) {
    const RestStaffLook* look = &*looks_.insert(lookOf(music.real, staff)).first;
    restStaves_.push_back({system, {staff.staff()[par::staff], staff.instrument()}, look});
  }
  StaffFaults found;
  addTimeFaults(music.real, times, music.restStaves, found);
  if (!found.empty() || !music.real.tooLong().empty()) {
    SystemFaults& faults = faults_[system];
    faults.staves = std::move(found);
    faults.tooLong = music.real.tooLong();
  }
}

/// Follows the time of the music, which must be known, and adds what is wrong with the rests.
void MusicCheck::addRests(const SystemBars& bars, std::size_t system) {
  StaffFaults found;
  std::vector<UnequalBar> unequal = addRestFaults(bars, *meter_, found);
  if (!bars.rests.empty() && (!found.empty() || !unequal.empty())) {
    SystemFaults& faults = faults_[system];
    faults.staves.merge(found);
    faults.unequal = std::move(unequal);
  }
}

void MusicCheck::addWaitingRests() {
  for (const auto& [system, bars] : waiting_) {
    addRests(bars, system);
  }
  waiting_.clear();
}

/// Says of systems that hide their keys only that of the first one, until a key is shown again.
void MusicCheck::addHiddenKeys() {
  bool isShown = true;
  auto staff = restStaves_.begin();
  for (std::size_t system = 0; system < count_; ++system) {
    const bool hasRestStaves = staff != restStaves_.end() && staff->system == system;
    while (staff != restStaves_.end() && staff->system == system) {
      ++staff;
    }
    isShown = isShown || !keys_.isHidden(system);
    if (hasRestStaves && isShown && keys_.isHidden(system)) {
      isShown = false;
      faults_[system].hidesKey = true;
    }
  }
}

void MusicCheck::addLooks() {
  for (const CheckedStaff& checked : restStaves_) {
    StaffFaults found;
    addLookFaults(keys_, entries_, checked.system, {checked.staff, checked.look}, found);
    for (const auto& [fault, staves] : found) {
      faults_[checked.system].staves[fault].push_back(staves.front());
    }
  }
}

/// Without any time signature bars are those of common time.
void MusicCheck::addMissingTime(bool areAll) {
  if (meter_) {
    return;
  }
  meter_.emplace();
  addWaitingRests();
  if (firstWithRests_ && areAll) {
    faults_[*firstWithRests_].lacksTime = true;
  }
}

std::vector<MusicFault> MusicCheck::finish(Files& files, const CheckedResults& results) {
  bool isRead = true;
  while (isRead && count_ < results.count) {
    const auto music = readResult(files, results.at(count_));
    isRead = music.has_value();
    if (isRead) {
      add(*music);
    }
  }
  keys_.finish();
  addMissingTime(isRead && results.areAll);
  addHiddenKeys();
  addLooks();
  std::vector<MusicFault> all;
  if (!isRead) {
    Location unread{.file = results.at(count_).file};
    unread.system = static_cast<std::int16_t>(count_ + 1);
    all.push_back({messages::resultsNotChecked(unread), count_, {}});
  }
  for (const auto& [system, faults] : faults_) {
    addInWords(faults, wantsPlaces_ ? places_[system] : SystemPlaces(), results.at(system).file, system, all);
  }
  return all;
}

}  // namespace kiv
