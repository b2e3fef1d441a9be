#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "repair/system_scores.h"

namespace kiv {

/// An instrument that a staff may be of.
struct StaffCandidate {
  std::int16_t id = 0;
  double loss = 0;  ///< how much less likely than the best, as a logarithm; 0 for the best one

  bool operator==(const StaffCandidate&) const = default;
};

/// Which instrument a staff is of, as far as its system shows.
struct AssignedStaff {
  std::optional<std::size_t> instrument;   ///< an index in the known ones; none for a staff of an unknown instrument
  double margin = 0;                       ///< the total score less the best one that gives the staff another id
  std::vector<StaffCandidate> candidates;  ///< the best first; only of staves whose id is in doubt
};

/// Assigns the staves of a system to the known instruments, each to at most one staff, so that the evidence of all
/// together is highest: ids, looks, names, order, and how often an instrument is missing. The staves whose ids are in
/// doubt are marked; only they get margins and candidates.
std::vector<AssignedStaff> assignStaves(const GroupKnowledge& knowledge, std::size_t system,
                                        const std::vector<char>& inDoubt);

}  // namespace kiv
