#include "verify/music_looks.h"

#include <algorithm>

#include "verify/system_changes.h"

namespace kiv::proof {

MusicLooks::MusicLooks(const std::vector<MusicSystem>& systems) {
  for (const MusicSystem& system : systems) {
    read(system);
  }
}

void MusicLooks::read(const MusicSystem& system) {
  for (std::size_t s = 0; s < system.staves().size(); ++s) {
    if (system.isFirstOfInstrument(s)) {
      const MusicStaff& staff = system.staves()[s];
      const auto player = players_.try_emplace(staff.instrument(), Player{{systems_, s}, staff.staff(), {}}).first;
      readClefs(staff, player->second.clefs);
    }
  }
  ++systems_;
}

void MusicLooks::readClefs(const MusicStaff& staff, std::vector<Clefs>& clefs) const {
  const auto& signs = staff.items().signs;
  const auto isClef = [](const Item& item) { return item.type() == ItemType::clef; };
  const auto first = std::find_if(signs.begin(), signs.end(), isClef);
  if (first == signs.end()) {
    return;
  }
  const Item& last = *std::find_if(signs.rbegin(), signs.rend(), isClef);
  const auto isSame = [&](const Item& before) {
    return before[par::kind] == last[par::kind] && before[par::height] == last[par::height];
  };
  if (clefs.empty() || !isSame(clefs.back().last)) {
    clefs.push_back({systems_, *first, last});
  }
}

std::optional<std::pair<std::size_t, std::size_t>> MusicLooks::entry(float instrument) const {
  const auto player = players_.find(instrument);
  return player == players_.end() ? std::nullopt : std::optional(player->second.entry);
}

const Item* MusicLooks::firstStaff(float instrument) const {
  const auto player = players_.find(instrument);
  return player == players_.end() ? nullptr : &player->second.staff;
}

std::optional<Item> MusicLooks::clef(std::size_t system, float instrument) const {
  const auto player = players_.find(instrument);
  const Clefs* clefs = player == players_.end() ? nullptr : lastBefore(player->second.clefs, system);
  if (clefs == nullptr) {
    return std::nullopt;
  }
  return clefs->system < system ? clefs->last : clefs->first;
}

}  // namespace kiv::proof
