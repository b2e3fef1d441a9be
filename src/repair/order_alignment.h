#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "repair/optimal_assignment.h"

namespace kiv {

/// What it means to bring the staves of a system, from the top down, in line with the slots of a layout.
struct AlignmentScores {
  ScoreMatrix match;            ///< of a staff (row) in a slot (column)
  std::vector<double> skipped;  ///< of a slot that no staff is in
  std::vector<double> extra;    ///< of a staff that is in no slot
};

/// The slot of each staff, none for an extra one, so that both go down together and the total is highest.
std::vector<std::optional<std::size_t>> align(const AlignmentScores& scores);

/// For each staff (row) and slot (column): the highest total of all other staves and slots when the staff is in the
/// slot, the staves above it above that slot and those below it below. The staff's own match is left out, so this is
/// what the order alone says.
ScoreMatrix orderScores(const AlignmentScores& scores);
/// The same for a staff in no slot.
std::vector<double> extraScores(const AlignmentScores& scores);

}  // namespace kiv
