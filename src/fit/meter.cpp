#include "fit/meter.h"

#include <algorithm>
#include <cmath>

#include "fit/lengths.h"

namespace kiv::fit {
namespace {

constexpr float commonTime = 99;
constexpr float allaBreve = 98;
constexpr float smallest = 0.5;  // half a beat, and the breve
constexpr float largestUpper = 128;
constexpr float largestLower = 64;

/// The signature with numbers instead of the codes.
Meter inNumbers(const Meter& meter) {
  if (meter.upper == commonTime) {
    return {4, 4};
  }
  return meter.upper == allaBreve ? Meter{2, 2} : meter;
}

/// The values that a rest may have, from the largest down: two, four and so on beats, if the bar divides so; the beat;
/// and what the beat divides into. Three units make a beat in times such as 6/8.
std::vector<double> valuesOf(const Meter& meter) {
  constexpr double shortest = 1.0 / 16;
  const Meter time = inNumbers(meter);
  const double unit = asRead(4.0 / time.lower);
  const auto units = static_cast<int>(time.upper);
  const bool isWhole = static_cast<float>(units) == time.upper;
  const bool isCompound = isWhole && units > 3 && units % 3 == 0;
  const double beat = isCompound ? 3 * unit : unit;
  int beats = isCompound ? units / 3 : units;
  std::vector<double> values;
  const bool isPowerOfTwo = isWhole && (beats & (beats - 1)) == 0;
  for (; isPowerOfTwo && beats > 1; beats /= 2) {
    values.push_back(beat * beats);
  }
  values.push_back(beat);
  double value = isCompound ? unit : unit / 2;
  while (value >= shortest) {
    values.push_back(value);
    value /= 2;
  }
  return values;
}

bool isMultiple(double moment, double value) {
  constexpr double rounding = 0.004;
  return std::abs(std::round(moment / value) * value - moment) < rounding;
}

}  // namespace

bool Meter::isKnown() const {
  const Meter time = inNumbers(*this);
  return time.upper >= smallest && time.upper <= largestUpper && time.lower >= smallest && time.lower <= largestLower;
}

double Meter::length() const {
  const Meter time = inNumbers(*this);
  return asRead(4.0 * time.upper / time.lower);
}

Meter meterOf(const Item& timeSignature) {
  return {timeSignature[par::upperNumber], timeSignature[par::lowerNumber]};
}

std::vector<double> restsOf(const Meter& meter, double offset, double length) {
  const std::vector<double> values = valuesOf(meter);
  const double end = offset + length;
  std::vector<double> rests;
  double moment = offset;
  while (end - moment >= leastDifference) {
    const double left = end - moment;
    const auto fits = std::find_if(values.begin(), values.end(), [&](double value) {
      return value < left + leastDifference && isMultiple(moment, value);
    });
    // From within a tuplet, one rest lasts to the next quarter.
    const double toNext = std::floor(moment + tolerance + sumError) + 1 - moment;
    const double value = fits == values.end() ? std::min(left, toNext) : *fits;
    rests.push_back(isSame(value, left) ? left : value);
    moment += rests.back();
  }
  return rests;
}

}  // namespace kiv::fit
