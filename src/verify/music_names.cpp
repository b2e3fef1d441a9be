#include "verify/music_names.h"

#include <algorithm>
#include <utility>

#include "verify/system_changes.h"

namespace kiv::proof {
namespace {

/// Whether a text stands beside the left end of a staff and has a letter, as names do.
bool isName(const Item& item, const MusicStaff& staff, float middle) {
  constexpr float below = 7;  // in staff steps from the middle line
  constexpr float above = 6;
  if (!(item[par::position] < staff.staff()[par::position])) {
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
  const float lines = staff.staff()[par::lines];
  const float middle = lines >= 1 && lines <= 12 ? lines - 1 : 4;
  std::vector<Item> names;
  for (const Item& item : staff.items().texts) {
    if (isName(item, staff, middle)) {
      names.push_back(item);
      names.back()[par::position] -= staff.staff()[par::position];
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

}  // namespace

MusicNames::MusicNames(const std::vector<MusicSystem>& systems) {
  for (const MusicSystem& system : systems) {
    read(system);
  }
}

void MusicNames::read(const MusicSystem& system) {
  bool anyName = false;
  for (std::size_t s = 0; s < system.staves().size(); ++s) {
    const MusicStaff& staff = system.staves()[s];
    std::vector<Item> found = namesOf(staff);
    anyName = anyName || !found.empty();
    if (!found.empty() && system.isFirstOfInstrument(s)) {
      auto& known = names_[staff.instrument()];
      if (known.empty() || !isSameNames(found, known.back().names)) {
        known.push_back({hasNames_.size(), std::move(found)});
      }
    }
  }
  hasNames_.push_back(anyName);
}

std::vector<Item> MusicNames::names(std::size_t system, float instrument) const {
  const auto known = names_.find(instrument);
  const Names* last = known == names_.end() ? nullptr : lastBefore(known->second, system);
  return last == nullptr || !hasNames_[system] ? std::vector<Item>() : last->names;
}

}  // namespace kiv::proof
