#pragma once

#include <cstdint>

#include "tests/reference/conversion.h"

namespace kiv::reference {

/// Adds a whole rest staff for an instrument of the order table.
void insertStaff(Conversion& run, std::int16_t instr);

}  // namespace kiv::reference
