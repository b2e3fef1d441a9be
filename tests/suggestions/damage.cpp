#include "tests/suggestions/damage.h"

#include <algorithm>
#include <utility>

namespace kiv::test {
namespace {

constexpr std::size_t mostDamaged = 30;  // % of the staves

using Place = std::pair<std::size_t, std::size_t>;  // system and staff

/// Writes a wrong id of one of the first three kinds.
void damageStaff(Choices& choices, PlannedSystem& system, std::size_t staff, Damage damage) {
  int& id = system.staves[staff].writtenId;
  if (damage == Damage::blanked) {
    id = 0;
  } else if (damage == Damage::mistyped || system.staves.size() == 1) {
    id = mistyped(choices, id);
  } else {
    const bool above = staff > 0 && (staff + 1 == system.staves.size() || choices.oneIn(2));
    id = system.staves[above ? staff - 1 : staff + 1].writtenId;
  }
}

std::vector<Place> placesFor(Choices& choices, const std::vector<PlannedSystem>& systems, Damage damage) {
  std::vector<Place> places;
  for (std::size_t s = 0; s < systems.size(); ++s) {
    for (std::size_t i = 0; i < systems[s].staves.size(); ++i) {
      places.emplace_back(s, i);
    }
  }
  const std::size_t most = std::max<std::size_t>(1, places.size() * mostDamaged / 100);
  if (damage == Damage::wholeSystems || damage == Damage::oneInstrument) {
    const bool bySystem = damage == Damage::wholeSystems;
    const std::size_t chosen = choices.below(bySystem ? systems.size() : systems.front().staves.size());
    std::erase_if(places, [&](const Place& place) { return (bySystem ? place.first : place.second) != chosen; });
    return places;
  }
  choices.shuffle(places);
  places.resize(std::min(most, static_cast<std::size_t>(choices.between(1, static_cast<int>(most)))));
  return places;
}

}  // namespace

std::string damageSystems(Choices& choices, const std::vector<PlannedInstrument>& instruments,
                          std::vector<PlannedSystem>& systems, Damage damage) {
  static const std::vector<const char*> words = {"blanked", "doubled",      "mistyped",
                                                 "mixed",   "whole system", "one instrument everywhere"};
  const bool isBlock = damage == Damage::wholeSystems || damage == Damage::oneInstrument;
  const auto ofBlock = static_cast<Damage>(choices.between(0, 3));
  for (const auto& [system, staff] : placesFor(choices, systems, damage)) {
    const Damage kind = isBlock ? ofBlock : damage;
    const Damage one = kind == Damage::mixed ? static_cast<Damage>(choices.between(0, 2)) : kind;
    damageStaff(choices, systems[system], staff, one);
  }
  (void)instruments;
  return words[static_cast<std::size_t>(damage)];
}

}  // namespace kiv::test
