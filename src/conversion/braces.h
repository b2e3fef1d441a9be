#pragma once

#include <cstdint>
#include <unordered_map>

#include "mus/item_table.h"

namespace kiv {

/// The instruments whose staves carry a brace or bracket, and its kind. What one system brings holds for all
/// later systems.
struct BraceTable {
  std::unordered_map<float, std::int16_t> kinds;  ///< by instrument identifier, the kind met first
};

/// Enters the instruments of the system's staves that carry a brace, unless they are there already. A kind that 16 bits
/// do not hold ends the program.
void collectBraces(const ItemTable& items, BraceTable& braces);

/// Puts a brace before every staff of the instruments in the table.
void outputBraces(ItemTable& items, const BraceTable& braces);

}  // namespace kiv
