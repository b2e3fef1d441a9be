#pragma once

#include <cstdint>

#include "mus/item_table.h"

namespace kiv {

/// Gives the rest staff of the instrument the time signatures of the reference staff.
void setTimeSignature(ItemTable& items, std::int16_t instrument);

}  // namespace kiv
