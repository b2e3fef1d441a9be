#pragma once

#include <cstdint>

#include "conversion/barlines.h"
#include "conversion/order_table.h"
#include "mus/item_table.h"

namespace kiv {

/// Fills every bar of the instrument's rest staff with one rest as long as the bar, under the first note or rest of the
/// reference staff in that bar, and removes the mark of an empty rest staff. A bar without a beat, or of unknown
/// length, ends the program.
void setRestDurations(ItemTable& items, std::int16_t instrument, const OrderTable& order, const BarlineList& barlines);

}  // namespace kiv
