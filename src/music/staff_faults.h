#pragma once

#include <cstddef>
#include <map>
#include <tuple>
#include <vector>

#include "verify/music_group.h"

namespace kiv {

/// What can be wrong with a rest staff, in the order in which it is reported for a bar.
enum class FaultKind { restLength, twoRests, noRest, key, time, clef, lateEntry };

/// Faults that are the same on several staves are one.
struct Fault {
  std::size_t bar = 0;  ///< its index in the system; of a clef or a late entry 0
  FaultKind kind = FaultKind::restLength;
  double rest = 0;   ///< in quarter notes; of a rest of another length only
  double music = 0;  ///< the same

  bool operator<(const Fault& other) const {
    return std::tie(bar, kind, rest, music) < std::tie(other.bar, other.kind, other.rest, other.music);
  }
};

/// The rest staves that have each fault, from the top down.
using StaffFaults = std::map<Fault, std::vector<const proof::MusicStaff*>>;

/// The faults of the rest staves of a system, which has that index in the group.
StaffFaults findFaults(const proof::MusicGroup& group, std::size_t system,
                       const std::vector<proof::MusicStaff>& restStaves);

}  // namespace kiv
