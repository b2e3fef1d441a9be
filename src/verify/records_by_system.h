#pragma once

#include <span>
#include <vector>

#include "verify/finding.h"
#include "verify/report_records.h"

namespace kiv::proof {

/// The records of the systems that a conversion reaches, which are numbered from 1 without a gap.
struct RecordsBySystem {
  std::vector<std::span<const Record>> systems;  ///< parts of the records
  std::vector<Finding> findings;  ///< on staves of files that are no inputs, staves listed twice, and other systems
};

/// Sorts the records by their systems. Afterwards they are not in the order of the report any more; what needs that
/// order is to be found out before.
RecordsBySystem groupBySystem(Records& records);

}  // namespace kiv::proof
