#pragma once

#include <cstdint>

namespace kiv {

/// The share that one written number has of all the slips in typing another one: a digit wrong,
/// doubled, added, left out, or two exchanged. Above 0 for any two numbers, and hardly more for those that no single
/// slip explains. Both are not negative.
double slipShare(std::int16_t typed, std::int16_t meant);

/// Whether a single slip makes one of the numbers of the other.
bool isSlipOf(std::int16_t typed, std::int16_t meant);

}  // namespace kiv
