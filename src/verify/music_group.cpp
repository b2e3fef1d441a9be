#include "verify/music_group.h"

#include <algorithm>
#include <utility>

namespace kiv::proof {

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

MusicGroup::MusicGroup(std::vector<MusicSystem> systems)
    : systems_(std::move(systems)), keys_(systems_), looks_(systems_), names_(systems_), braces_(bracesOf(systems_)) {
  follow();
  placeParts();
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
  MusicMeter meter = first.value_or(MusicMeter());
  for (std::size_t s = 0; s < systems_.size(); ++s) {
    auto& bars = bars_.emplace_back();
    for (std::size_t bar = 0; bar <= systems_[s].bars().size(); ++bar) {
      if (const auto change = times[s].find(bar); change != times[s].end()) {
        meter = *meterIn(change->second.back());
      }
      if (bar < systems_[s].bars().size()) {
        bars.push_back({meter, lengthOf(systems_[s].bars()[bar].times, meter), 0});
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
  const auto entry = looks_.entry(instrument);
  return entry ? &systems_[entry->first].staves()[entry->second] : nullptr;
}

}  // namespace kiv::proof
