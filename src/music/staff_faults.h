#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <tuple>
#include <utility>
#include <vector>

#include "verify/music_keys.h"
#include "verify/music_looks.h"

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

/// A rest staff by its number and its instrument.
struct RestStaff {
  float number = 0;
  float instrument = 0;
};

/// The rest staves of a system that have each fault, from the top down.
using StaffFaults = std::map<Fault, std::vector<RestStaff>>;

/// What a rest staff shows at its left end and as keys, which the whole group says whether it is right.
struct RestStaffLook {
  std::size_t bars = 0;  ///< of its system
  float size = 0;
  float lines = 0;
  float par11 = 0;
  std::optional<std::pair<float, float>> clef;      ///< kind and height of the first one
  std::vector<std::pair<std::size_t, float>> keys;  ///< by the bar from which on they count

  /// An order of the bits, so that it is one of any numbers.
  bool operator<(const RestStaffLook& other) const;
};

RestStaffLook lookOf(const proof::MusicSystem& system, const proof::MusicStaff& staff);

/// Adds what is wrong with the key, the clef and the staff itself of the rest staff of a system, which has that index
/// in the group. All of the group must have been read.
void addLookFaults(const proof::MusicKeys& keys, const proof::MusicLooks& looks, std::size_t system,
                   const std::pair<RestStaff, const RestStaffLook*>& staff, StaffFaults& faults);

/// Adds, of each rest staff, the first bar from which on its time is not that of the system, whose times these are.
void addTimeFaults(const proof::MusicSystem& system, const std::map<std::size_t, std::vector<Item>>& times,
                   const std::vector<proof::MusicStaff>& restStaves, StaffFaults& faults);

}  // namespace kiv
