#pragma once

#include "tests/reference/report_staves.h"

namespace kiv::reference {

/// Fills the item table with these staves, the lowest of them as staff 1.
void readSystem(Conversion& run, const StaffList& list, std::int16_t system);

}  // namespace kiv::reference
