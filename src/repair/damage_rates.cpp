#include "repair/damage_rates.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include "repair/typing_slips.h"

namespace kiv {
namespace {

/// Of the ids that are doubled, those that are taken from any staff further away.
constexpr double fromElsewhere = 0.01;
/// What is assumed before a group is counted: this number of errors among this number of staves.
constexpr double usualErrors = 0.3;
constexpr double usualStaves = 50;
constexpr double highestRate = 0.3;
constexpr double lowestRate = 0.001;
constexpr double lowestMistyped = 0.003;  // what nobody has noticed

DamageRates estimate(const CodedGroup& group, const std::function<bool(std::int16_t)>& isInstrument) {
  double blank = 0;
  double doubled = 0;
  double mistyped = 0;
  for (const CodedSystem system : group.systems) {
    for (const CodedStaff& staff : system) {
      constexpr double half = 0.5;
      blank += staff.id == 0 ? 1 : 0;
      doubled += staff.repeated ? half : 0;
      mistyped += staff.id != 0 && !staff.repeated && !isInstrument(staff.id) ? 1 : 0;
    }
  }
  const auto rate = [&](double count, double lowest) {
    return std::clamp((count + usualErrors) / (static_cast<double>(group.staves) + usualStaves), lowest, highestRate);
  };
  DamageRates rates;
  rates.blank = rate(blank, lowestRate);
  rates.doubled = rate(doubled, lowestRate);
  rates.mistyped = rate(mistyped, lowestMistyped);
  rates.evident = blank + doubled + mistyped;
  return rates;
}

}  // namespace

double DamageRates::logWritten(std::int16_t written, std::int16_t meant, bool isNeighbor) const {
  if (written == meant) {
    return std::log(1 - all());
  }
  if (written == 0) {
    return std::log(blank);
  }
  return std::log(doubled * (isNeighbor ? fromNeighbor : fromElsewhere) + mistyped * slipShare(written, meant));
}

double DamageRates::logWrittenOfAny(std::int16_t written) const {
  return std::log(written == 0 ? blank : doubled * fromNeighbor + mistyped);
}

DamageRates estimateDamage(const CodedGroup& group) {
  const bool several = group.systems.size() > 2;
  return estimate(group, [&](std::int16_t id) { return !several || group.idSystems.at(id).size() > 1; });
}

DamageRates estimateDamage(const CodedGroup& group, const std::set<std::int16_t>& instruments) {
  return estimate(group, [&](std::int16_t id) { return instruments.contains(id); });
}

}  // namespace kiv
