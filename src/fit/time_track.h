#pragma once

#include <cstddef>
#include <map>
#include <vector>

#include "fit/meter.h"
#include "fit/system.h"

namespace kiv::fit {

/// Time signatures that count from a bar on.
struct TimeChange {
  Meter meter;              ///< that most staves have
  std::vector<Item> items;  ///< those of the highest of these staves
};

/// By the index of the bar from which they count; those after all bars have the number of bars. Signatures without a
/// length count for nothing.
using TimeChanges = std::map<std::size_t, TimeChange>;

TimeChanges timeChangesOf(const System& system);

}  // namespace kiv::fit
