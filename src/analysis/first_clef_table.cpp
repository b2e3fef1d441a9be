#include "analysis/first_clef_table.h"

#include <limits>

#include "base/number.h"

namespace kiv {

const FirstClefTable::Entry* FirstClefTable::find(std::int16_t instr) const {
  const auto place = places.find(instr);
  return place == places.end() ? nullptr : &entries[place->second];
}

void FirstClefTable::add(const Entry& entry) {
  places.emplace(entry.firstClefInstr, entries.size());
  entries.push_back(entry);
}

StaffFinder::StaffFinder(const ItemTable& table) {
  for (int i = 1; i <= table.itemCount(); ++i) {
    if (table.type(i) == ItemType::staff) {
      add(table.itemPar(i, par::staff), i);
    }
  }
}

void StaffFinder::add(float staff, int row) {
  if (!isSmallWhole(staff)) {
    others_.emplace(staff, row);
  } else if (auto& first = small_[static_cast<std::size_t>(staff)]; first == 0) {
    first = static_cast<std::int16_t>(row);
  }
}

int StaffFinder::find(float staff) const {
  if (isSmallWhole(staff)) {
    return small_[static_cast<std::size_t>(staff)];
  }
  const auto found = others_.find(staff);
  return found == others_.end() ? 0 : found->second;
}

void updateFirstClefTable(const Item& clef, const ItemTable& table, const StaffFinder& staves, const MusReader& reader,
                          FirstClefTable& firstClefs) {
  const int staffRow = staves.find(clef[par::staff]);
  if (staffRow == 0) {
    return;
  }
  const float instrument = table.itemPar(staffRow, par::instrument);
  const auto identifier = toInt16(instrument);
  // A fractional identifier is entered as a whole one, and so is never found again.
  if (identifier && static_cast<float>(*identifier) == instrument && firstClefs.find(*identifier) != nullptr) {
    return;
  }
  if (!identifier || firstClefs.firstClefCount() == std::numeric_limits<std::int16_t>::max()) {
    endProgram(messages::overflow(reader.location()));
  }
  firstClefs.add({*identifier, MarkedValue(clef[par::kind]), clef[par::height]});
}

}  // namespace kiv
