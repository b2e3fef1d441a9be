#include "music/staff_faults.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

#include "verify/music_meter.h"

namespace kiv {
namespace {

std::uint32_t bitsOf(float number) {
  return std::bit_cast<std::uint32_t>(number);
}

std::pair<std::size_t, std::uint32_t> bitsOf(const std::pair<std::size_t, float>& key) {
  return {key.first, bitsOf(key.second)};
}

std::size_t lastOf(std::size_t bars) {
  return bars == 0 ? 0 : bars - 1;
}

/// The first bar from which on the key is another; nullopt when it is always right.
std::optional<std::size_t> firstWrongKey(const RestStaffLook& look,
                                         const std::map<std::size_t, proof::SilentKey>& expected) {
  float now = 0;
  int right = 0;
  auto found = look.keys.begin();
  for (std::size_t bar = 0; bar <= look.bars; ++bar) {
    for (; found != look.keys.end() && found->first == bar; ++found) {
      now = found->second;
    }
    if (const auto other = expected.find(bar); other != expected.end()) {
      right = other->second.fifths;
    }
    if (now != static_cast<float>(right)) {
      return std::min(bar, lastOf(look.bars));
    }
  }
  return std::nullopt;
}

bool hasClef(const RestStaffLook& look, const std::optional<Item>& expected) {
  if (!expected || !look.clef) {
    return !expected || look.clef;
  }
  return look.clef->first == (*expected)[par::kind] && look.clef->second == (*expected)[par::height];
}

/// Whether a staff is like the one on which its instrument enters.
bool isSameStaff(const RestStaffLook& look, const Item& entry) {
  constexpr float rounding = 0.001F;
  return std::abs(entry[par::size] - look.size) < rounding && entry[par::lines] == look.lines &&
         entry[par::par11] == look.par11;
}

std::optional<proof::MusicMeter> lastTime(const std::map<std::size_t, std::vector<Item>>& times, std::size_t bar) {
  std::optional<proof::MusicMeter> last;
  if (const auto known = times.find(bar); known != times.end()) {
    for (const Item& item : known->second) {
      const auto meter = proof::meterIn(item);
      last = meter ? meter : last;
    }
  }
  return last;
}

}  // namespace

bool RestStaffLook::operator<(const RestStaffLook& other) const {
  const auto bits = [](const RestStaffLook& look) {
    const auto [kind, height] = look.clef.value_or(std::pair<float, float>());
    return std::tuple(look.bars, bitsOf(look.size), bitsOf(look.lines), bitsOf(look.par11), look.clef.has_value(),
                      bitsOf(kind), bitsOf(height));
  };
  if (const auto own = bits(*this), others = bits(other); own != others) {
    return own < others;
  }
  return std::lexicographical_compare(keys.begin(), keys.end(), other.keys.begin(), other.keys.end(),
                                      [](const auto& one, const auto& two) { return bitsOf(one) < bitsOf(two); });
}

RestStaffLook lookOf(const proof::MusicSystem& system, const proof::MusicStaff& staff) {
  RestStaffLook look{
      system.bars().size(), staff.staff()[par::size], staff.staff()[par::lines], staff.staff()[par::par11], {}, {}};
  const auto& signs = staff.items().signs;
  const auto clef =
      std::find_if(signs.begin(), signs.end(), [](const Item& item) { return item.type() == ItemType::clef; });
  if (clef != signs.end()) {
    look.clef = {(*clef)[par::kind], (*clef)[par::height]};
  }
  for (const auto& [bar, items] : system.signatures(staff, ItemType::keySignature)) {
    look.keys.emplace_back(bar, items.back()[par::key]);
  }
  return look;
}

void addLookFaults(const proof::MusicKeys& keys, const proof::MusicLooks& looks, std::size_t system,
                   const std::pair<RestStaff, const RestStaffLook*>& staff, StaffFaults& faults) {
  const auto& [restStaff, look] = staff;
  const float instrument = restStaff.instrument;
  if (const auto bar = firstWrongKey(*look, keys.keys(system, instrument))) {
    faults[{*bar, FaultKind::key}].push_back(restStaff);
  }
  const Item* entry = looks.firstStaff(instrument);
  if (entry == nullptr) {
    return;
  }
  const bool isClefRight = hasClef(*look, looks.clef(system, instrument));
  if (looks.hasPlayed(system, instrument)) {
    if (!isClefRight) {
      faults[{0, FaultKind::clef}].push_back(restStaff);
    }
  } else if (!isClefRight || !isSameStaff(*look, *entry)) {
    faults[{0, FaultKind::lateEntry}].push_back(restStaff);
  }
}

void addTimeFaults(const proof::MusicSystem& system, const std::map<std::size_t, std::vector<Item>>& times,
                   const std::vector<proof::MusicStaff>& restStaves, StaffFaults& faults) {
  const std::size_t bars = system.bars().size();
  for (const proof::MusicStaff& staff : restStaves) {
    const auto found = system.signatures(staff, ItemType::timeSignature);
    std::size_t bar = 0;
    while (bar <= bars && lastTime(found, bar) == lastTime(times, bar)) {
      ++bar;
    }
    if (bar <= bars) {
      faults[{std::min(bar, lastOf(bars)), FaultKind::time}].push_back({staff.staff()[par::staff], staff.instrument()});
    }
  }
}

}  // namespace kiv
