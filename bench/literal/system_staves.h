#pragma once

#include "bench/literal/conversion.h"

namespace kiv::literal {

/// The staves that the report lists for a system; the report is read for every system anew.
StaffList stavesOfSystem(Conversion& run, int system);

/// Fills the item table with these staves, the lowest of them as staff 1.
void readSystem(Conversion& run, const StaffList& list, int system);

}  // namespace kiv::literal
