#pragma once

#include "conversion/order_table.h"
#include "mus/item_table.h"

namespace kiv {

/// Takes over from the staves of the system in the table what rest staves of their instruments will copy: size, lines
/// and P11 from the first staff of the instrument in the whole run, clef, key and time signature from the right end of
/// this system, where it has them.
void setStaffAttributes(const ItemTable& items, OrderTable& order);

}  // namespace kiv
