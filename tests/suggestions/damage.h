#pragma once

#include <string>
#include <vector>

#include "tests/suggestions/scores.h"

namespace kiv::test {

enum class Damage { blanked, doubled, mistyped, mixed, wholeSystems, oneInstrument };

/// Writes wrong ids at 1 to 30 % of all staves. Returns the words for it.
std::string damageSystems(Choices& choices, const std::vector<PlannedInstrument>& instruments,
                          std::vector<PlannedSystem>& systems, Damage damage);

}  // namespace kiv::test
