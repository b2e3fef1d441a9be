#include "verify/music_group.h"

#include <algorithm>
#include <utility>

namespace kiv::proof {
namespace {

/// The time signatures of the highest staff that has the time of most, by bar.
std::map<std::size_t, std::vector<Item>> timesOf(const MusicSystem& system) {
  std::map<std::size_t, std::vector<std::vector<Item>>> byBar;
  for (const MusicStaff& staff : system.staves()) {
    for (auto& [bar, items] : system.signatures(staff, ItemType::timeSignature)) {
      std::vector<Item> known = items;
      std::erase_if(known, [](const Item& item) { return !meterIn(item); });
      if (!known.empty()) {
        byBar[bar].push_back(known);
      }
    }
  }
  std::map<std::size_t, std::vector<Item>> times;
  for (const auto& [bar, staves] : byBar) {
    std::ptrdiff_t most = 0;
    for (const auto& items : staves) {
      const auto same = std::count_if(staves.begin(), staves.end(), [&](const std::vector<Item>& other) {
        return *meterIn(other.back()) == *meterIn(items.back());
      });
      if (same > most) {
        most = same;
        times[bar] = items;
      }
    }
  }
  return times;
}

const MusicStaff* staffOf(const MusicSystem& system, float instrument) {
  for (const MusicStaff& staff : system.staves()) {
    if (staff.instrument() == instrument) {
      return &staff;
    }
  }
  return nullptr;
}

/// The texts beside the left end of a staff, with positions from there. One without a letter is no name.
std::vector<Item> namesOf(const MusicStaff& staff) {
  constexpr float below = 7;  // in staff steps from the middle line
  constexpr float above = 6;
  const float lines = staff.staff[par::lines];
  const float middle = lines >= 1 && lines <= 12 ? lines - 1 : 4;
  std::vector<Item> names;
  for (Item item : staff.items) {
    const bool isBeside = item[par::height] - middle <= above && middle - item[par::height] <= below;
    const bool isText = item.type().hasText() && item[par::position] < staff.staff[par::position];
    const bool hasLetter = std::any_of(item.text.begin(), item.text.end(), [](char c) {
      const auto byte = static_cast<unsigned char>(c);
      return byte >= 0x80 || (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
    });
    if (isText && isBeside && hasLetter) {
      item[par::position] -= staff.staff[par::position];
      names.push_back(std::move(item));
    }
  }
  return names;
}

}  // namespace

MusicGroup::MusicGroup(std::vector<MusicSystem> systems)
    : systems_(std::move(systems)), keys_(systems_), braces_(bracesOf(systems_)) {
  follow();
  placeParts();
}

std::map<std::size_t, std::vector<Item>> MusicGroup::times(std::size_t system) const {
  return timesOf(systems_[system]);
}

/// Follows the time from the first system to the last.
void MusicGroup::follow() {
  std::vector<std::map<std::size_t, std::vector<Item>>> times;
  std::optional<MusicMeter> first;
  for (const MusicSystem& system : systems_) {
    times.push_back(timesOf(system));
    if (!first && !times.back().empty()) {
      first = meterIn(times.back().begin()->second.back());
    }
  }
  hasTime_ = first.has_value();
  MusicMeter meter = first.value_or(MusicMeter());
  for (std::size_t s = 0; s < systems_.size(); ++s) {
    auto& bars = bars_.emplace_back();
    for (std::size_t bar = 0; bar <= systems_[s].bars().size(); ++bar) {
      if (const auto change = times[s].find(bar); change != times[s].end()) {
        meter = *meterIn(change->second.back());
      }
      if (bar < systems_[s].bars().size()) {
        const auto& staves = systems_[s].bars()[bar].times;
        const Ticks length = lengthOf(staves, meter);
        bars.push_back({meter, length, 0, isUnanimous(staves, length)});
      }
    }
  }
}

/// Looks at the bars that are too short from the first on. One that the next completes is the first part of a bar. One
/// that begins the group or a section is a pickup.
void MusicGroup::placeParts() {
  BarToFill* open = nullptr;  // a part whose second part may follow
  bool begins = true;
  for (std::size_t s = 0; s < systems_.size(); ++s) {
    for (std::size_t b = 0; b < bars_[s].size(); ++b) {
      BarToFill& bar = bars_[s][b];
      const Ticks missing = bar.meter.length() - bar.length;
      begins = begins || systems_[s].bars()[b].beginsSection;
      if (bar.isOneRest()) {
        open = nullptr;
      } else if (open != nullptr && open->meter == bar.meter && isSameTime(open->length, missing)) {
        open->begin = 0;
        bar.begin = missing;
        open = nullptr;
      } else {
        bar.begin = begins ? missing : 0;
        open = &bar;
      }
      begins = false;
    }
    begins = begins || systems_[s].endsSection();
  }
}

const MusicStaff* MusicGroup::firstStaff(float instrument) const {
  for (const MusicSystem& system : systems_) {
    if (const MusicStaff* staff = staffOf(system, instrument)) {
      return staff;
    }
  }
  return nullptr;
}

std::optional<Item> MusicGroup::clef(std::size_t system, float instrument) const {
  const auto isClef = [](const Item& item) { return item.type() == ItemType::clef; };
  std::optional<Item> clef;
  for (std::size_t i = 0; i < systems_.size() && (i < system || !clef); ++i) {
    if (const MusicStaff* staff = staffOf(systems_[i], instrument)) {
      const auto last = std::find_if(staff->items.rbegin(), staff->items.rend(), isClef);
      const auto first = std::find_if(staff->items.begin(), staff->items.end(), isClef);
      if (first != staff->items.end()) {
        clef = i < system ? *last : *first;
      }
    }
  }
  return clef;
}

bool MusicGroup::hasNames(std::size_t system) const {
  const auto& staves = systems_[system].staves();
  return std::any_of(staves.begin(), staves.end(), [](const MusicStaff& staff) { return !namesOf(staff).empty(); });
}

std::vector<Item> MusicGroup::names(std::size_t system, float instrument) const {
  std::vector<Item> names;
  if (!hasNames(system)) {
    return names;
  }
  for (std::size_t i = 0; i < systems_.size() && (i < system || names.empty()); ++i) {
    if (const MusicStaff* staff = staffOf(systems_[i], instrument)) {
      auto own = namesOf(*staff);
      names = own.empty() ? names : std::move(own);
    }
  }
  return names;
}

}  // namespace kiv::proof
