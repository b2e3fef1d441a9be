#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "repair/layout_profile.h"
#include "repair/layout_scores.h"

namespace kiv {

/// For each staff of a system: the index of its slot; none for a staff in no slot. There are very many, and no more
/// slots than a system can have staves.
using StaffSlots = std::vector<std::optional<std::uint16_t>>;

/// The layout that the systems of a group share: its slots from the top down, and which staff is in which.
struct ReferenceLayout {
  std::vector<LayoutSlot> slots;
  std::vector<StaffSlots> slotOf;  ///< of each system
};

/// In groups of more systems a system's own vote for a layout hardly counts, and taking it out takes time.
inline constexpr std::size_t mostLeftOut = 60;

/// Finds the layout from all systems: starting from the system that has most in common with the others, each of the
/// others is brought in line with the slots found so far, by ids and looks, and adds what they lack.
ReferenceLayout findLayout(const CodedGroup& group);

}  // namespace kiv
