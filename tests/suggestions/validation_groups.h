#pragma once

#include <cstdint>

#include "tests/suggestions/planned_group.h"

namespace kiv::test {

/// Groups that no threshold of suggestions was chosen with: other scores, numberings, errors and irregularities than
/// those of calibrationGroup. Instruments are of invented families, ids are numbered by families, downward or at
/// random, errors come alone, in runs of staves, on whole pages and in halves of an instrument, and typing errors are
/// keys beside the right one, numbers that are one too high or too low, and any numbers at all. Of three groups one is
/// undamaged.
///
/// Each number is one group, the same in every run.
PlannedGroup validationGroup(std::uint32_t number);

}  // namespace kiv::test
