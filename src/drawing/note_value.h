#pragma once

namespace kiv {

/// How a duration is written: a power of two of quarter notes, and dots.
struct NoteValue {
  double quarters = 1;  ///< 4 is a whole note, 0.5 an eighth
  int dots = 0;

  bool isWhole() const { return quarters >= 4; }
  bool isHalf() const { return quarters == 2; }
  /// Flags of a note, hooks of a rest: 1 for an eighth, at most 6.
  int flags() const;

  bool operator==(const NoteValue&) const = default;
};

/// The written value of a duration in quarter notes. A third of a binary value is one of a triplet, and any other
/// duration is written as the next lower value. Anything that is not positive is written as a quarter.
NoteValue noteValue(float duration);

/// The length of a stem with this number of flags, in steps of a staff. More than two flags need a longer one.
double stemSteps(int flags);

}  // namespace kiv
