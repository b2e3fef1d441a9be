#pragma once

#include <optional>
#include <vector>

#include "verify/music_time.h"

namespace kiv::proof {

/// The time of a bar.
struct MusicMeter {
  float upper = 4;  ///< 99 stands for common time, 98 for alla breve
  float lower = 4;

  /// In quarter notes.
  double quarters() const;
  Ticks length() const;

  bool operator==(const MusicMeter&) const = default;
};

/// The time that a signature gives; nullopt for one with more than 128 units or less than half of one, and for units
/// longer than a breve or shorter than a 64th note, so that lengths stay within what ticks can count.
std::optional<MusicMeter> meterIn(const Item& signature);

/// The rests of a part of a bar, that begins at a time of the whole bar: the largest values that fall on beats.
std::vector<Ticks> restsIn(const MusicMeter& meter, Ticks begin, Ticks length);

/// The length on which the staves of a bar agree: that of the time in force, if one staff has it; else the commonest,
/// the longest of several.
Ticks lengthOf(const std::vector<StaffTime>& times, const MusicMeter& inForce);
/// Whether all that play last that long.
bool isUnanimous(const std::vector<StaffTime>& times, Ticks length);

}  // namespace kiv::proof
