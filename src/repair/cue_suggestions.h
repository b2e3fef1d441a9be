#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "repair/suggestion_reasons.h"

namespace kiv {

/// A cue marker that refers to no instrument of its system.
struct UndefinedCue {
  std::size_t system = 0;  ///< an index, as the following
  std::size_t staff = 0;
  std::size_t cue = 0;  ///< of the staff
  std::optional<std::int16_t> newId;
  std::optional<std::size_t> follows;  ///< the staff of the system whose corrected id explains the new one
  double margin = 0;                   ///< how much likelier the new id is than any other, as a logarithm
  std::vector<std::int16_t> candidates;
  std::string reason;
};

/// Finds the cue markers that refer to no instrument of their system as the decided ids say, and what they may mean:
/// the instrument of a staff whose id was wrong in the same way, or one that their own staff quotes elsewhere and whose
/// id a slip makes theirs.
std::vector<UndefinedCue> findUndefinedCues(const GroupEvidence& group, const DecidedIds& decided,
                                            const SuggestionReasons& reasons);

}  // namespace kiv
