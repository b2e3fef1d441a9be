#pragma once

#include <cstddef>
#include <vector>

#include "fit/group_music.h"
#include "fit/system.h"

namespace kiv::fit {

/// A staff to be made for an instrument that does not play in a system.
struct MissingStaff {
  std::size_t system = 0;  ///< its index in the group
  Item staff;              ///< the staff item, complete
};

/// All items of the rest staff but its barlines, in the order in which they are added; their staff number is that of
/// the staff item.
std::vector<Item> restStaff(const GroupMusic& group, const System& system, const MissingStaff& missing);

}  // namespace kiv::fit
