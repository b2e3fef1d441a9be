#include "verify/music_time.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace kiv::proof {
namespace {

constexpr float wholeBar = -2;
constexpr float wholeBarToo = -12;

Ticks ticksOf(const Item& item) {
  return std::llround(static_cast<double>(item[par::duration]) * quarterNote);
}

/// Whether it is a note or a rest, and no cue marker.
bool isPlayed(const Item& item) {
  return item.type() == ItemType::note || (item.type() == ItemType::rest && item[par::cuedInstrument] == 0);
}

/// The first end after all that end now; the ends up to it are over. There is at least one.
Ticks passOn(std::vector<Ticks>& ends) {
  const Ticks now = *std::min_element(ends.begin(), ends.end());
  std::erase_if(ends, [now](Ticks end) { return end < now + leastTime; });
  return now;
}

}  // namespace

bool isSameTime(Ticks one, Ticks other) {
  return std::abs(one - other) < leastTime;
}

bool takesTime(const Item& item, float longest) {
  const float duration = item[par::duration];
  return isPlayed(item) && duration <= longest && duration >= static_cast<float>(leastTime) / quarterNote;
}

bool isTooLong(const Item& item) {
  return isPlayed(item) && item[par::duration] > longestNote;
}

bool isWholeBarRest(const Item& item) {
  return item.type() == ItemType::rest && (item[par::kind] == wholeBar || item[par::kind] == wholeBarToo);
}

StaffTime staffTimeOf(std::span<const Item> items, float longest) {
  StaffTime time;
  std::vector<Ticks> ends;  // of a chord, or of voices: few
  for (const Item& item : items) {
    if (!takesTime(item, longest)) {
      continue;
    }
    time.plays = true;
    const float position = item[par::position];
    if (isWholeBarRest(item)) {
      time.length = std::max(time.length, ticksOf(item));
      time.wholeBarRest = time.wholeBarRest.value_or(position);
      continue;
    }
    if (time.moments.empty()) {
      time.moments.push_back({0, position});
    } else if (time.moments.back().position != position) {
      time.moments.push_back({passOn(ends), position});
    }
    ends.push_back(time.moments.back().time + ticksOf(item));
    time.length = std::max(time.length, ends.back());
  }
  return time;
}

double inQuarters(Ticks length) {
  constexpr double rounding = 0.004;
  const double quarters = static_cast<double>(length) / quarterNote;
  for (const int parts : {1, 2, 4, 8, 16, 32, 3, 6, 12, 24, 5, 10, 20, 7, 14}) {
    const double nearest = std::round(quarters * parts) / parts;
    if (std::abs(quarters - nearest) < rounding) {
      return nearest;
    }
  }
  return std::round(quarters * 1000) / 1000;
}

}  // namespace kiv::proof
