#pragma once

#include <cstdint>

#include "analysis/first_clef_table.h"
#include "conversion/barlines.h"
#include "conversion/order_table.h"
#include "mus/item_table.h"

namespace kiv {

/// Adds a complete rest staff for an instrument that does not play in the system: staff, clef, key signature, barlines,
/// time signatures and rests. It takes the number of the staff of the instrument before it in the order, and the staves
/// from there up move up by one; the first instrument of the order is on top. A system without a position for it ends
/// the program.
void insertStaff(ItemTable& items, std::int16_t instr, const OrderTable& order, const FirstClefTable& firstClefs,
                 const BarlineList& barlines);

}  // namespace kiv
