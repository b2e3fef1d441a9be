#pragma once

#include <cstdint>

#include "tests/suggestions/planned_group.h"

namespace kiv::test {

/// Groups that the thresholds of suggestions were chosen with.
///
/// Most are consistent groups of 3 to 40 instruments and 4 to 60 systems, of whose ids up to 30 % are blanked, doubled
/// or mistyped: spread evenly, in whole systems, or in one instrument everywhere. Some have instruments missing or in
/// another order as well. About a third are undamaged: consistent ones, and such that are not, for good reasons.
///
/// Each number is one group, the same in every run.
PlannedGroup calibrationGroup(std::uint32_t number);

}  // namespace kiv::test
