#pragma once

#include "mus/item_table.h"

namespace kiv {

/// Marks the barlines at the left end of their staves; despite its name, it deletes nothing. It also marks the bottom
/// staff of every system, with the number of staves that its barlines span. It visits staff numbers 1 to 256, upward,
/// and skips those that a system covers. A span that 16 bits do not hold ends the program.
void deleteLeftBarlines(ItemTable& table);

}  // namespace kiv
