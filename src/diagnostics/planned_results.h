#pragma once

#include <cstdint>
#include <set>
#include <string_view>
#include <vector>

namespace kiv {

/// A staff of a page that a conversion writes.
struct PlannedStaff {
  double number = 0;
  double instrument = 0;
  bool isRest = false;  ///< inserted by the conversion

  bool operator==(const PlannedStaff&) const = default;
};

/// The staves of a result page, from the top down. present lists the instruments that the system had.
std::vector<PlannedStaff> stavesOfResult(std::string_view page, const std::set<std::int16_t>& present);

}  // namespace kiv
