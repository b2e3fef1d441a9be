#include "repair/other_numbering.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <set>
#include <utility>

namespace kiv {
namespace {

constexpr std::size_t enoughStaves = 3;

/// What is written at a staff, and the known id of the same slot.
struct IdPair {
  std::int16_t written = 0;
  std::int16_t known = 0;
};
using IdPairs = std::vector<IdPair>;

/// Whether a part is most of a whole, and no accident.
bool isMost(std::size_t part, std::size_t whole) {
  return part >= enoughStaves && 5 * part >= 3 * whole;
}

IdPairs pairsBySlot(const CodedSystem& system, const StaffSlots& slotOf,
                    const std::map<std::size_t, std::int16_t>& idOfSlot) {
  IdPairs pairs;
  for (std::size_t i = 0; i < system.size(); ++i) {
    const auto known = slotOf[i] ? idOfSlot.find(*slotOf[i]) : idOfSlot.end();
    if (known != idOfSlot.end()) {
      pairs.push_back({system[i].id, known->second});
    }
  }
  return pairs;
}

/// Pairs from the top down, for a system with as many staves as most systems have.
IdPairs pairsByPlace(const CodedSystem& system, const std::vector<LayoutSlot>& slots,
                     const std::map<std::size_t, std::int16_t>& idOfSlot) {
  constexpr double usual = 0.5;
  const std::vector<double> present = presences(slots);
  IdPairs pairs;
  for (const auto& [slot, id] : idOfSlot) {
    if (present[slot] > usual) {
      pairs.push_back({0, id});
    }
  }
  if (pairs.size() != system.size()) {
    return {};
  }
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    pairs[i].written = system[i].id;
  }
  return pairs;
}

bool rises(const IdPairs& pairs) {
  for (std::size_t i = 1; i < pairs.size(); ++i) {
    if ((pairs[i].written > pairs[i - 1].written) != (pairs[i].known > pairs[i - 1].known)) {
      return false;
    }
  }
  return true;
}

/// Whether ids that are known elsewhere say that they have moved, and none says that it is wrong.
bool isFlawless(const CodedSystem& system) {
  return std::none_of(system.begin(), system.end(),
                      [](const CodedStaff& staff) { return staff.id == 0 || staff.repeated; });
}

bool makesSense(IdPairs pairs, const std::set<std::int16_t>& known, bool flawless) {
  const std::size_t all = pairs.size();
  std::erase_if(pairs, [](const IdPair& pair) { return pair.written == pair.known || pair.written == 0; });
  const auto strange = static_cast<std::size_t>(
      std::count_if(pairs.begin(), pairs.end(), [&](const IdPair& pair) { return !known.contains(pair.written); }));
  if (!isMost(pairs.size(), all) || (!flawless && 2 * strange < pairs.size())) {
    return false;
  }
  std::map<int, std::size_t> distances;
  std::set<std::int16_t> ids;
  std::size_t commonest = 0;
  for (const IdPair& pair : pairs) {
    commonest = std::max(commonest, ++distances[pair.written - pair.known]);
    ids.insert(pair.written);
  }
  constexpr std::size_t manyStaves = 4;  // fewer rise by accident
  return isMost(commonest, pairs.size()) || (pairs.size() >= manyStaves && ids.size() == pairs.size() && rises(pairs));
}

}  // namespace

bool hasOtherNumbering(const CodedGroup& group, const ReferenceLayout& layout,
                       const std::vector<KnownInstrument>& instruments, std::size_t system) {
  std::map<std::size_t, std::int16_t> idOfSlot;
  std::set<std::int16_t> known;
  for (const KnownInstrument& instrument : instruments) {
    idOfSlot.emplace(instrument.slot, instrument.id);  // the slot's own comes first
    known.insert(instrument.id);
  }
  const CodedSystem staves = group.systems[system];
  const bool flawless = isFlawless(staves);
  return makesSense(pairsBySlot(staves, layout.slotOf[system], idOfSlot), known, flawless) ||
         makesSense(pairsByPlace(staves, layout.slots, idOfSlot), known, flawless);
}

}  // namespace kiv
