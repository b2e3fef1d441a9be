#include "fit/group_music.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

#include "fit/lengths.h"
#include "fit/names.h"

namespace kiv::fit {
namespace {

/// The first clef of a staff and the last.
std::pair<std::optional<Item>, std::optional<Item>> clefsOf(const Staff& staff) {
  std::pair<std::optional<Item>, std::optional<Item>> clefs;
  for (const Item& item : staff.items) {
    if (item.type() == ItemType::clef) {
      clefs.second = item;
      clefs.first = clefs.first ? clefs.first : clefs.second;
    }
  }
  return clefs;
}

}  // namespace

bool TimedBar::isWhole() const {
  return length > meter.length() - leastDifference;
}

void GroupMusic::add(const System& system) {
  Record record;
  addBars(system, record);
  addLooks(system, record);
  keys_.add(system);
  braces_.add(system);
  systems_.push_back(std::move(record));
}

void GroupMusic::addBars(const System& system, Record& record) {
  for (const Bar& bar : system.bars) {
    BarRecord& added = record.bars.emplace_back();
    added.opensSection = bar.opensSection;
    for (const Staff& staff : system.staves) {
      const std::vector<Beat> beats = beatsIn(staff, bar);
      if (!beats.empty()) {
        added.lengths.push_back(timeOf(beats).length);
      }
    }
  }
  for (const auto& [bar, change] : timeChangesOf(system)) {
    record.meters.emplace(bar, change.meter);
  }
  record.closesSection = system.closesSection;
}

void GroupMusic::addLooks(const System& system, Record& record) {
  for (const Staff& staff : system.staves) {
    if (std::isnan(staff.instrument())) {
      continue;
    }
    Look look;
    look.names = namesOf(staff);
    record.hasNames = record.hasNames || !look.names.empty();
    const auto [first, last] = clefsOf(staff);
    const bool isNew = !instruments_.contains(staff.instrument());
    Instrument& instrument = instruments_[staff.instrument()];
    if (isNew) {
      instrument.staff = staff.staff;
    }
    if (!instrument.first.clef) {
      instrument.first.clef = first;
    }
    if (instrument.first.names.empty()) {
      instrument.first.names = look.names;
    }
    const Look before = instrument.last.empty() ? Look() : instrument.last.rbegin()->second;
    look.clef = last ? last : before.clef;
    look.names = look.names.empty() ? before.names : look.names;
    if (isNew || look.clef != before.clef || look.names != before.names) {
      instrument.last[systems_.size()] = std::move(look);
    }
  }
}

Look GroupMusic::look(std::size_t system, float instrument) const {
  const auto found = instruments_.find(instrument);
  if (found == instruments_.end()) {
    return {};
  }
  const auto later = found->second.last.lower_bound(system);
  Look look = later == found->second.last.begin() ? found->second.first : std::prev(later)->second;
  if (!look.clef) {
    look.clef = found->second.first.clef;
  }
  if (look.names.empty()) {
    look.names = found->second.first.names;
  }
  return look;
}

/// The first time signature of the group, for what comes before it.
Meter GroupMusic::firstMeter() const {
  for (const Record& record : systems_) {
    if (!record.meters.empty()) {
      return record.meters.begin()->second;
    }
  }
  return usualMeter;
}

void GroupMusic::finish() {
  keys_.finish();
  Meter meter = firstMeter();
  for (Record& record : systems_) {
    for (std::size_t bar = 0; bar <= record.bars.size(); ++bar) {
      const auto change = record.meters.find(bar);
      meter = change == record.meters.end() ? meter : change->second;
      if (bar < record.bars.size()) {
        const auto& lengths = record.bars[bar].lengths;
        const double length = lengths.empty() ? meter.length() : agreedLength(lengths, meter.length()).length;
        record.timed.push_back({meter, length, 0});
      }
    }
  }
  placeParts();
}

/// Finds out where in a whole bar the parts of bars begin. The second part of a bar that a barline splits ends with the
/// bar, and so does a pickup: a part at the begin of the group or of a section that no second part completes.
void GroupMusic::placeParts() {
  std::vector<std::pair<TimedBar*, bool>> bars;  // and whether they open a section
  bool opensSection = true;
  for (Record& record : systems_) {
    for (std::size_t bar = 0; bar < record.bars.size(); ++bar) {
      bars.emplace_back(&record.timed[bar], opensSection || record.bars[bar].opensSection);
      opensSection = false;
    }
    opensSection = opensSection || record.closesSection;
  }
  const auto complete = [](const TimedBar& one, const TimedBar& other) {
    return !one.isWhole() && !other.isWhole() && one.meter == other.meter &&
           isSame(one.length + other.length, one.meter.length());
  };
  for (std::size_t i = 0; i < bars.size(); ++i) {
    TimedBar& bar = *bars[i].first;
    if (bar.isWhole()) {
      continue;
    }
    if (i + 1 < bars.size() && complete(bar, *bars[i + 1].first)) {
      TimedBar& second = *bars[++i].first;
      second.offset = second.meter.length() - second.length;
    } else if (bars[i].second) {
      bar.offset = bar.meter.length() - bar.length;
    }
  }
}

}  // namespace kiv::fit
