#include "analysis/first_clef_table.h"

#include <algorithm>
#include <limits>

#include "mus/number.h"

namespace kiv {
namespace {

bool hasInstrument(const FirstClefTable& firstClefs, float instrument) {
  return std::any_of(firstClefs.entries.begin(), firstClefs.entries.end(), [&](const FirstClefTable::Entry& entry) {
    return static_cast<float>(entry.firstClefInstr) == instrument;
  });
}

}  // namespace

StaffFinder::StaffFinder(const ItemTable& table) {
  for (int i = 1; i <= table.itemCount(); ++i) {
    if (table.itemPar(i, par::type) == type::staff) {
      add(table.itemPar(i, par::staff), i);
    }
  }
}

int StaffFinder::find(float staff) const {
  const auto found = rows_.find(staff);
  return found == rows_.end() ? 0 : found->second;
}

void updateFirstClefTable(Host& host, const Item& clef, const ItemTable& table, const StaffFinder& staves,
                          const std::string& place, FirstClefTable& firstClefs) {
  const int staffRow = staves.find(clef.par[par::staff]);
  if (staffRow == 0) {
    return;
  }
  const float instrument = table.itemPar(staffRow, par::instrument);
  if (hasInstrument(firstClefs, instrument)) {
    return;
  }
  const auto identifier = toInt16(instrument);
  if (!identifier || firstClefs.firstClefCount() == std::numeric_limits<std::int16_t>::max()) {
    host.runTimeError(RunTimeError::overflow, place);
  }
  constexpr float kindMarker = 1000;
  firstClefs.entries.push_back({*identifier, clef.par[par::kind] + kindMarker, clef.par[par::height]});
}

}  // namespace kiv
