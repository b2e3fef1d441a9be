#include "verify/music_meter.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace kiv::proof {
namespace {

constexpr double rounding = 0.004 * quarterNote;

struct Fraction {
  double upper = 4;
  double lower = 4;
};

Fraction fractionOf(float upper, float lower) {
  if (upper == 99) {
    return {4, 4};
  }
  return upper == 98 ? Fraction{2, 2} : Fraction{upper, lower};
}

/// Whether a moment falls on a multiple of a value.
bool fallsOn(Ticks moment, Ticks value) {
  const Ticks over = moment % value;
  return static_cast<double>(std::min(over, value - over)) < rounding;
}

/// The values of rests in a time, the largest first: beats, two, four and so on of them where the bar divides so, and
/// what a beat divides into.
std::vector<Ticks> restValues(const MusicMeter& meter) {
  constexpr Ticks shortest = quarterNote / 16;
  const Fraction time = fractionOf(meter.upper, meter.lower);
  const Ticks unit = std::llround(4.0 * quarterNote / time.lower);
  const bool isWhole = std::floor(time.upper) == time.upper;
  const auto units = isWhole ? static_cast<int>(time.upper) : 1;
  const bool inThrees = units > 3 && units % 3 == 0;
  const int beats = inThrees ? units / 3 : units;
  std::vector<Ticks> values;
  for (int group = beats; beats % 2 == 0 && std::popcount(static_cast<unsigned>(beats)) == 1 && group > 1; group /= 2) {
    values.push_back(unit * group * (inThrees ? 3 : 1));
  }
  if (inThrees) {
    values.push_back(3 * unit);
  }
  for (Ticks value = unit; value >= shortest; value /= 2) {
    values.push_back(value);
  }
  return values;
}

}  // namespace

double MusicMeter::quarters() const {
  const Fraction time = fractionOf(upper, lower);
  return 4.0 * time.upper / time.lower;
}

Ticks MusicMeter::length() const {
  return std::llround(quarters() * quarterNote);
}

std::optional<MusicMeter> meterIn(const Item& signature) {
  constexpr double mostUnits = 128;
  constexpr double leastUnits = 0.5;
  constexpr double smallestUnit = 64;
  constexpr double largestUnit = 0.5;  // the breve
  const MusicMeter meter{signature[par::upperNumber], signature[par::lowerNumber]};
  const Fraction time = fractionOf(meter.upper, meter.lower);
  const bool hasUnits = time.upper >= leastUnits && time.upper <= mostUnits;
  const bool isKnown = hasUnits && time.lower >= largestUnit && time.lower <= smallestUnit;
  return isKnown ? std::optional(meter) : std::nullopt;
}

std::vector<Ticks> restsIn(const MusicMeter& meter, Ticks begin, Ticks length) {
  const std::vector<Ticks> values = restValues(meter);
  std::vector<Ticks> rests;
  Ticks left = length;
  while (left >= leastTime) {
    const Ticks now = begin + length - left;
    // From within a tuplet on, to the next quarter.
    Ticks rest = std::min(left, quarterNote - (now + leastTime) % quarterNote + leastTime);
    for (const Ticks value : values) {
      if (value < left + leastTime && fallsOn(now, value)) {
        rest = value;
        break;
      }
    }
    rest = isSameTime(rest, left) ? left : rest;
    rests.push_back(rest);
    left -= rest;
  }
  return rests;
}

Ticks lengthOf(const std::vector<StaffTime>& times, const MusicMeter& inForce) {
  Ticks best = inForce.length();
  std::ptrdiff_t most = 0;
  for (const StaffTime& time : times) {
    const auto isAsLong = [&](const StaffTime& other) { return other.plays && isSameTime(other.length, time.length); };
    const std::ptrdiff_t votes = time.plays ? std::count_if(times.begin(), times.end(), isAsLong) : 0;
    if (votes > 0 && isSameTime(time.length, inForce.length())) {
      return inForce.length();
    }
    if (votes > most || (votes > 0 && votes == most && time.length > best)) {
      most = votes;
      best = time.length;
    }
  }
  return best;
}

bool isUnanimous(const std::vector<StaffTime>& times, Ticks length) {
  return std::all_of(times.begin(), times.end(),
                     [&](const StaffTime& time) { return !time.plays || isSameTime(time.length, length); });
}

}  // namespace kiv::proof
