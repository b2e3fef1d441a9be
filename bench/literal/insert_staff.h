#pragma once

#include <cstdint>

#include "bench/literal/conversion.h"

namespace kiv::literal {

/// Appends the items of one staff of the current file, under its new staff number.
void readStaff(Conversion& run, std::int16_t staff, std::int16_t newStaff);

/// Adds a whole rest staff for an instrument of the order table.
void insertStaff(Conversion& run, std::int16_t instr);

}  // namespace kiv::literal
