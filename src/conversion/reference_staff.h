#pragma once

#include <cstdint>
#include <string_view>

#include "mus/item_table.h"

namespace kiv {

/// The staff numbers of a rest staff being filled, and of the real staff whose bars it copies.
struct StaffPair {
  int restStaffItem = 0;
  float rest = 0;
  float reference = 0;
};

/// Finds the first staff of the instrument, and the first one in item order that is not itself being filled. A system
/// without one of them ends the program; the message names the procedure.
StaffPair findStaffPair(const ItemTable& items, std::int16_t instrument, std::string_view procedure);

}  // namespace kiv
