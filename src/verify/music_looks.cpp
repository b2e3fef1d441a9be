#include "verify/music_looks.h"

#include <algorithm>
#include <cmath>

namespace kiv::proof {
namespace {

/// Whether a text stands beside the left end of a staff and has a letter, as names do.
bool isName(const Item& item, const MusicStaff& staff, float middle) {
  constexpr float below = 7;  // in staff steps from the middle line
  constexpr float above = 6;
  if (!item.type().hasText() || !(item[par::position] < staff.staff[par::position])) {
    return false;
  }
  const bool isBeside = item[par::height] - middle <= above && middle - item[par::height] <= below;
  return isBeside && std::any_of(item.text.begin(), item.text.end(), [](char c) {
           const auto byte = static_cast<unsigned char>(c);
           return byte >= 0x80 || (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
         });
}

/// The names of a staff, with positions from its left end.
std::vector<Item> namesOf(const MusicStaff& staff) {
  const float lines = staff.staff[par::lines];
  const float middle = lines >= 1 && lines <= 12 ? lines - 1 : 4;
  std::vector<Item> names;
  for (const Item& item : staff.items) {
    if (isName(item, staff, middle)) {
      names.push_back(item);
      names.back()[par::position] -= staff.staff[par::position];
    }
  }
  return names;
}

bool isSameNames(const std::vector<Item>& names, const std::vector<Item>& others) {
  // Staff numbers change from page to page.
  return std::equal(names.begin(), names.end(), others.begin(), others.end(), [](Item one, const Item& other) {
    one[par::staff] = other[par::staff];
    return one == other;
  });
}

/// Of what was recorded by system, the last before one, else the first; null when there is none.
template <typename Record>
const Record* lastBefore(const std::vector<Record>& records, std::size_t system) {
  const auto later = std::lower_bound(records.begin(), records.end(), system,
                                      [](const Record& record, std::size_t index) { return record.system < index; });
  if (later != records.begin()) {
    return &*std::prev(later);
  }
  return records.empty() ? nullptr : &records.front();
}

}  // namespace

MusicLooks::MusicLooks(const std::vector<MusicSystem>& systems) {
  for (const MusicSystem& system : systems) {
    read(system);
  }
}

void MusicLooks::read(const MusicSystem& system) {
  const std::size_t index = hasNames_.size();
  bool anyName = false;
  for (std::size_t s = 0; s < system.staves().size(); ++s) {
    const MusicStaff& staff = system.staves()[s];
    anyName = anyName || !namesOf(staff).empty();
    const float instrument = staff.instrument();
    const bool isSecond = std::any_of(system.staves().begin(), system.staves().begin() + static_cast<std::ptrdiff_t>(s),
                                      [&](const MusicStaff& other) { return other.instrument() == instrument; });
    if (!std::isnan(instrument) && !isSecond) {
      readStaff(index, staff, players_.try_emplace(instrument, Player{{index, s}, staff.staff, {}, {}}).first->second);
    }
  }
  hasNames_.push_back(anyName);
}

void MusicLooks::readStaff(std::size_t index, const MusicStaff& staff, Player& player) {
  const auto isClef = [](const Item& item) { return item.type() == ItemType::clef; };
  const auto first = std::find_if(staff.items.begin(), staff.items.end(), isClef);
  if (first != staff.items.end()) {
    const Item& last = *std::find_if(staff.items.rbegin(), staff.items.rend(), isClef);
    const auto isSame = [&](const Item& before) {
      return before[par::kind] == last[par::kind] && before[par::height] == last[par::height];
    };
    if (player.clefs.empty() || !isSame(player.clefs.back().last)) {
      player.clefs.push_back({index, *first, last});
    }
  }
  std::vector<Item> names = namesOf(staff);
  if (!names.empty() && (player.names.empty() || !isSameNames(names, player.names.back().names))) {
    player.names.push_back({index, std::move(names)});
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

std::vector<Item> MusicLooks::names(std::size_t system, float instrument) const {
  const auto player = players_.find(instrument);
  const Names* names = player == players_.end() ? nullptr : lastBefore(player->second.names, system);
  return names == nullptr || !hasNames_[system] ? std::vector<Item>() : names->names;
}

}  // namespace kiv::proof
