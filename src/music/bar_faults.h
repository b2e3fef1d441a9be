#pragma once

#include <cstddef>
#include <map>
#include <utility>
#include <vector>

#include "music/staff_faults.h"
#include "verify/music_group.h"

namespace kiv {

/// The rests of a rest staff in a bar.
struct BarRests {
  bool any = false;
  bool areTwo = false;  ///< two begin together, or one stands beside one that fills the whole bar
  proof::Ticks length = 0;
};

/// The bars of a system, as far as rests and music in them depend on the time in force.
struct SystemBars {
  /// Of each bar the staves that play, one of them where all last equally long.
  std::vector<std::vector<proof::StaffTime>> times;
  std::vector<std::pair<RestStaff, std::vector<BarRests>>> rests;  ///< by bar
  std::map<std::size_t, proof::MusicMeter> changes;                ///< of the time, by bar
};

/// The times are those of the system.
SystemBars barsOf(const proof::MusicSystem& system, const std::map<std::size_t, std::vector<Item>>& times,
                  const std::vector<proof::MusicStaff>& restStaves);

/// A bar in which the staves that play last unequally long, and what is taken to be its length.
using UnequalBar = std::pair<std::size_t, proof::Ticks>;

/// Adds what is wrong with the rests, and returns the unequal bars. The meter is the one in force before the system; it
/// becomes the one after it.
std::vector<UnequalBar> addRestFaults(const SystemBars& bars, proof::MusicMeter& meter, StaffFaults& faults);

}  // namespace kiv
