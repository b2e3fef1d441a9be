#include "diagnostics/instruments.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

#include "base/number.h"
#include "diagnostics/distinct.h"
#include "diagnostics/system_facts.h"
#include "mus/format.h"
#include "platform/file_buffer.h"

namespace kiv {
namespace {

class InstrumentFinder {
 public:
  explicit InstrumentFinder(Files& files) : files_(files) {}

  std::vector<Instrument> find();

 private:
  struct Found {
    Instrument instrument;
    NameCandidates names;
  };
  using Described = std::vector<const DescribedStaff*>;

  Described describe(const SystemFact& system);
  void addStaff(const SystemFact& system, const StaffFact& fact, const DescribedStaff* staff);
  void addCues(std::int16_t instrument, const DescribedStaff& staff);
  void addNames(const SystemFact& system, const Described& staves);

  Files& files_;
  FileBuffer buffer_;
  std::map<std::string, std::vector<DescribedStaff>> pages_;  // those of the system that is added
  std::map<std::int16_t, Found> found_;
  std::map<std::int16_t, std::set<std::int16_t>> cuedBy_;
};

/// The staves of a system in their pages; null where a page does not hold one.
InstrumentFinder::Described InstrumentFinder::describe(const SystemFact& system) {
  std::set<std::string> needed;
  for (const StaffFact& fact : system.staves) {
    needed.insert(fact.file);
  }
  std::erase_if(pages_, [&](const auto& page) { return !needed.contains(page.first); });
  Described staves;
  for (const StaffFact& fact : system.staves) {
    auto page = pages_.find(fact.file);
    if (page == pages_.end()) {
      page =
          pages_.emplace(fact.file, describeStaves(buffer_.read(files_, fact.file, readableBytes).value_or(""))).first;
    }
    staves.push_back(findListed(page->second, fact));
  }
  return staves;
}

void InstrumentFinder::addCues(std::int16_t instrument, const DescribedStaff& staff) {
  for (const float cued : staff.cued) {
    if (const auto id = toInt16(cued); id && static_cast<float>(*id) == cued) {
      cuedBy_[*id].insert(instrument);
    }
  }
}

void InstrumentFinder::addStaff(const SystemFact& system, const StaffFact& fact, const DescribedStaff* staff) {
  Instrument& instrument = found_[fact.instrument].instrument;
  instrument.last = {fact.file, system.number, fact.staff, staff == nullptr ? 0 : staff->place.item};
  if (++instrument.staves == 1) {
    instrument.id = fact.instrument;
    instrument.first = instrument.last;
  }
  if (instrument.systems.empty() || instrument.systems.back() != system.number) {
    instrument.systems.push_back(system.number);
  }
  if (staff == nullptr) {
    return;
  }
  for (const ClefForm& clef : staff->clefs) {
    addDistinct(instrument.clefs, clef);
  }
  for (const float key : staff->keys) {
    addDistinct(instrument.keys, key);
  }
  addDistinct(instrument.lines, staff->lines);
  addDistinct(instrument.sizes, staff->size);
  addCues(fact.instrument, *staff);
}

/// A text between two staves may name both; it counts for those that have none of their own in the whole group.
void InstrumentFinder::addNames(const SystemFact& system, const Described& staves) {
  for (std::size_t s = 0; s < staves.size(); ++s) {
    if (staves[s] == nullptr) {
      continue;
    }
    if (!staves[s]->beside.empty()) {
      found_[system.staves[s].instrument].names.add(staves[s]->beside, NamePlace::besideStaff);
    }
    const DescribedStaff* next = s + 1 < staves.size() ? staves[s + 1] : nullptr;
    const std::string& between = next != nullptr && staves[s]->below.empty() ? next->above : staves[s]->below;
    if (next == nullptr || between.empty()) {
      continue;
    }
    for (const std::size_t neighbor : {s, s + 1}) {
      found_[system.staves[neighbor].instrument].names.add(between, NamePlace::betweenStaves);
    }
  }
}

std::vector<Instrument> InstrumentFinder::find() {
  for (const SystemFact& system : readSystemFacts(files_)) {
    const Described staves = describe(system);
    for (std::size_t s = 0; s < staves.size(); ++s) {
      addStaff(system, system.staves[s], staves[s]);
    }
    addNames(system, staves);
  }
  std::vector<Instrument> instruments;
  for (auto& [id, found] : found_) {
    found.instrument.order = static_cast<int>(instruments.size()) + 1;
    // Staves without an identifier are of different instruments, unless their names say otherwise.
    if (id != 0 || found.names.agree()) {
      found.instrument.name = found.names.best();
    }
    const std::set<std::int16_t>& cues = cuedBy_[id];
    found.instrument.cuedBy.assign(cues.begin(), cues.end());
    instruments.push_back(std::move(found.instrument));
  }
  return instruments;
}

}  // namespace

std::vector<Instrument> findInstruments(Files& files) {
  return InstrumentFinder(files).find();
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
