#pragma once

#include <cstdint>

#include "tests/reference/conversion.h"

namespace kiv::reference {

/// Gives the instrument's rest staff the time signatures of a real staff.
void setTimeSignature(ItemTable& items, std::int16_t instrument);

/// Gives every bar of the instrument's rest staff one rest that fills it.
void setRestDurations(Conversion& run, std::int16_t instrument);

}  // namespace kiv::reference
