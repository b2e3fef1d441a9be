#include "diagnostics/instruments.h"

#include <algorithm>
#include <utility>

#include "base/number.h"
#include "diagnostics/distinct.h"

namespace kiv {
namespace {

InstrumentPlace placeOf(const SystemStaff& staff, float number, int item) {
  return {std::string(staff.file), staff.system, generalNumber(number), item};
}

/// Enters a system, which nearly always is the last one or a new one behind it.
void addSystem(std::vector<std::int16_t>& systems, std::int16_t system) {
  if (systems.empty() || systems.back() < system) {
    systems.push_back(system);
  } else if (!std::ranges::binary_search(systems, system)) {
    systems.insert(std::ranges::lower_bound(systems, system), system);
  }
}

}  // namespace

void InstrumentCollector::addStaff(const SystemStaff& staff) {
  const DescribedStaff& described = *staff.staff;
  Found& found = found_[staff.instrument];
  found.last = staff;
  found.lastItem = described.place.item;
  found.lastNumber = described.number;
  Instrument& instrument = found.instrument;
  if (++instrument.staves == 1) {
    instrument.id = staff.instrument;
    instrument.first = placeOf(staff, found.lastNumber, found.lastItem);
  }
  addSystem(instrument.systems, staff.system);
  for (const ClefForm& clef : described.clefs) {
    addDistinct(instrument.clefs, clef);
  }
  for (const float key : described.keys) {
    addDistinct(instrument.keys, key);
  }
  addDistinct(instrument.lines, described.lines);
  addDistinct(instrument.sizes, described.size);
  for (const float cued : described.cued) {
    if (const auto id = toInt16(cued); id && static_cast<float>(*id) == cued) {
      cuedBy_[*id].insert(staff.instrument);
    }
  }
}

/// A text between two staves is for those of them that have no text of their own.
void InstrumentCollector::addNames(std::span<const SystemStaff> staves) {
  for (std::size_t s = 0; s < staves.size(); ++s) {
    const DescribedStaff& staff = *staves[s].staff;
    if (!staff.beside.empty()) {
      found_[staves[s].instrument].names.add(staff.beside, NamePlace::besideStaff);
    }
    if (s + 1 == staves.size()) {
      continue;
    }
    const std::string& between = staff.below.empty() ? staves[s + 1].staff->above : staff.below;
    if (between.empty()) {
      continue;
    }
    for (const std::size_t neighbor : {s, s + 1}) {
      if (staves[neighbor].staff->beside.empty()) {
        found_[staves[neighbor].instrument].names.add(between, NamePlace::betweenStaves);
      }
    }
  }
}

void InstrumentCollector::add(std::span<const SystemStaff> staves) {
  for (const SystemStaff& staff : staves) {
    addStaff(staff);
  }
  addNames(staves);
}

std::vector<Instrument> InstrumentCollector::instruments() const {
  std::vector<Instrument> instruments;
  for (const auto& [id, found] : found_) {
    Instrument instrument = found.instrument;
    instrument.order = static_cast<int>(instruments.size()) + 1;
    instrument.last = placeOf(found.last, found.lastNumber, found.lastItem);
    // Staves without an identifier are of different instruments, unless their names say otherwise.
    if (id != 0 || found.names.agree()) {
      instrument.name = found.names.best();
    }
    if (const auto cues = cuedBy_.find(id); cues != cuedBy_.end()) {
      instrument.cuedBy.assign(cues->second.begin(), cues->second.end());
    }
    instruments.push_back(std::move(instrument));
  }
  return instruments;
}

InstrumentNames shownNames(const std::vector<Instrument>& instruments) {
  InstrumentNames names;
  for (const Instrument& instrument : instruments) {
    if (!instrument.name.empty()) {
      names[instrument.id] = instrument.name.shown();
    }
  }
  return names;
}

}  // namespace kiv
