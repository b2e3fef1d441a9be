#pragma once

#include <vector>

namespace kiv::fit {

// Lengths are in quarter notes.

/// The shortest length that counts; lengths and moments that differ by less are the same. Half of a 128th note.
constexpr double tolerance = 1.0 / 64;
/// More than what sums of such lengths lose, and less than two of them can differ by.
constexpr double sumError = 1E-6;
/// Lengths and moments that differ by exactly the shortest length are two, however they were summed.
constexpr double leastDifference = tolerance - sumError;

bool isSame(double one, double other);

/// A duration without what single precision adds to it, so that sums of the same durations are the same.
double asRead(double duration);

/// The length that notes have nearest to a sum of durations: thirds and fifths of a beat are rounded in page files.
double asWritten(double duration);

/// The length that staves of one bar come to.
struct AgreedLength {
  double length = 0;
  bool isUnanimous = true;
};

/// The length in force, if one of the staves has it; else the one that most of them have, the longer one of equally
/// many. There is at least one.
AgreedLength agreedLength(const std::vector<double>& lengths, double inForce);

}  // namespace kiv::fit
