#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace kiv {

enum class DeviationKind : std::uint8_t { missing, extra, moved, duplicate };

/// One step from a common layout to another one.
struct LayoutEdit {
  DeviationKind kind = DeviationKind::missing;
  std::int16_t instrument = 0;
  std::optional<std::size_t> staff;  ///< its staff in the other layout, from 0 at the top; none for a missing one

  bool operator==(const LayoutEdit&) const = default;
};

/// What turns the common layout into the other one, in the fewest steps: the staves of their longest common
/// subsequence stay; an instrument that is both removed and inserted is moved; one that is only inserted is a duplicate
/// when the layout has it once more, else extra. Missing ones come first, in the order of the common layout, then the
/// staves of the other layout from the top.
std::vector<LayoutEdit> layoutEdits(const std::vector<std::int16_t>& common, const std::vector<std::int16_t>& other);

}  // namespace kiv
