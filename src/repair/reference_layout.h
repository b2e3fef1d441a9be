#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "repair/layout_profile.h"
#include "repair/order_alignment.h"

namespace kiv {

/// The layout that the systems of a group share: its slots from the top down, and which staff is in which.
struct ReferenceLayout {
  std::vector<LayoutSlot> slots;
  /// For each system and staff: the index of its slot; none for a staff in no slot.
  std::vector<std::vector<std::optional<std::size_t>>> slotOf;
};

/// How likely a system has a staff in each slot: neither 0 nor 1. Where there are few systems, the other slots count,
/// too.
std::vector<double> presences(const std::vector<LayoutSlot>& slots);
/// The share of staves that are missing because systems are not complete, of all that there would be; slots of few
/// systems aside.
double missingShare(const std::vector<LayoutSlot>& slots);

/// Finds the layout from all systems: starting from the system that has most in common with the others, each of the
/// others is brought in line with the slots found so far, by ids and looks, and adds what they lack.
ReferenceLayout findLayout(const CodedGroup& group);

/// How the staves of a system fit to the slots, by their ids, unless these are not to be trusted, and by their looks;
/// and what it means to leave slots out.
AlignmentScores alignmentScores(const CodedGroup& group, const CodedSystem& system,
                                const std::vector<LayoutSlot>& slots, bool trustsIds = true);

}  // namespace kiv
