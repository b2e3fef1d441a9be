#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <vector>

#include "repair/staff_assignment.h"

namespace kiv {

/// What is wrong with an id.
enum class IdProblem {
  zero,       ///< it is 0
  duplicate,  ///< it stands twice in its system
  rare,       ///< it occurs in so few systems that it must be a slip
  misplaced,  ///< it is that of another staff of the system, whose own id is wrong
  undefined,  ///< of a cue marker: no staff of the system has it
};

/// How certain a proposal is; the surest comes first.
enum class Confidence { sure, likely, guess };

/// Which id a staff should have whose own is wrong.
struct StaffDecision {
  IdProblem problem = IdProblem::zero;
  std::optional<KnownInstrument> instrument;  ///< none for a staff that stays open
  Confidence confidence = Confidence::guess;
  double margin = 0;                     ///< how much likelier the instrument is than any other, as a logarithm
  std::vector<std::int16_t> candidates;  ///< of a staff that stays open, the likeliest first
};

/// For each staff of a system a decision, none where nothing is wrong.
using SystemDecisions = std::vector<std::optional<StaffDecision>>;

/// How certain a margin is.
Confidence confidenceOf(double margin);

/// Decides which ids of a system are wrong, as 0, doubled, or none of the known ones, and which are right instead. No
/// two staves get the same id, and none gets one that another staff keeps.
SystemDecisions decideSystem(const GroupKnowledge& knowledge, const std::set<std::int16_t>& knownIds,
                             std::size_t system);

}  // namespace kiv
