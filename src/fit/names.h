#pragma once

#include <vector>

#include "fit/system.h"

namespace kiv::fit {

/// The texts left of a staff and beside it that have a letter, from the left. Their positions are from the staff's left
/// end.
std::vector<Item> namesOf(const Staff& staff);

}  // namespace kiv::fit
