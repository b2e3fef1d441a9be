#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <vector>

#include "fuzz/support/group_inputs.h"
#include "fuzz/support/report_view.h"

namespace kiv::fuzz {

/// One staff of a result: what must be found on it.
struct ExpectedStaff {
  float instrument = 0;
  std::optional<Items> items;  ///< of the input, without staff numbers; nullopt for a generated staff
};

using ExpectedSystem = std::vector<ExpectedStaff>;

/// The staves of a system in the order of its result, the highest instrument first. It is empty where nothing is
/// guaranteed but that the result can be read, for one of these reasons:
/// - two records name one staff, or are to become one;
/// - on a staff of the report there is no staff item in its file, or several;
/// - two staves are of one instrument;
/// - a barline becomes a brace;
/// - there are more staves than the writer writes.
ExpectedSystem expectedSystem(const std::vector<Record>& records, const std::set<std::int16_t>& instruments,
                              GroupInputs& inputs);

}  // namespace kiv::fuzz
