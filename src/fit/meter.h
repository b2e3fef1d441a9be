#pragma once

#include <vector>

#include "mus/item.h"

namespace kiv::fit {

/// A time signature.
struct Meter {
  float upper = 0;  ///< 99 is common time, 98 alla breve
  float lower = 0;

  /// Whether it is one that music can have: at most 128 beats, and units from the breve down to 64ths. Only such a one
  /// has a length.
  bool isKnown() const;
  /// The length of a bar in quarter notes.
  double length() const;

  bool operator==(const Meter&) const = default;
};

/// The time where a group has no time signature at all.
constexpr Meter usualMeter{4, 4};

Meter meterOf(const Item& timeSignature);

/// The rests that fill a part of a bar, in quarter notes: the largest values that fall on beats. The part begins at the
/// offset, in quarter notes from the beginning of a whole bar.
std::vector<double> restsOf(const Meter& meter, double offset, double length);

}  // namespace kiv::fit
