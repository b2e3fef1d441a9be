#pragma once

#include <vector>

#include "mus/item.h"

namespace kiv::test {

/// How long the music of a staff lasts between two positions, in quarter notes; 0 without music. Uses nothing of what
/// makes or proves rest staves.
double lasts(const std::vector<Item>& staff, float from, float to);

/// Whether two lengths are the same but for the rounding of tuplets.
bool lastEqually(double one, double other);

}  // namespace kiv::test
