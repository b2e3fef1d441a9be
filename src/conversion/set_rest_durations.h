#pragma once

#include <cstdint>

#include "conversion/barlines.h"
#include "conversion/order_table.h"
#include "conversion/system_page.h"

namespace kiv {

/// Fills every bar of the instrument's rest staff with one rest as long as the bar, under the first note or rest of the
/// reference staff in that bar, and takes the mark of an empty rest staff off. A bar without a beat, or whose length
/// nothing tells, ends the program.
void setRestDurations(const SystemPage& page, std::int16_t instrument, const OrderTable& order,
                      const BarlineList& barlines);

}  // namespace kiv
