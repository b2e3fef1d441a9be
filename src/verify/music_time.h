#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "mus/item.h"

// The rules for time in music, implemented for the proof of fitting rest staves and for warnings about results.
namespace kiv::proof {

/// Time is counted in ticks, so that the usual tuplets come out whole.
using Ticks = std::int64_t;
constexpr Ticks quarterNote = 40320;
/// Moments nearer than this are the same, as page files round the durations of tuplets: half of a 128th note.
constexpr Ticks leastTime = quarterNote / 64;

bool isSameTime(Ticks one, Ticks other);

/// The longest note or rest of the music, in quarter notes. What is longer is a mistake, and is not counted.
constexpr float longestNote = 1024;
/// The longest rest on a rest staff: it may be as long as all notes of a bar.
constexpr float longestRest = 1E9F;

/// Whether an item is a note or a rest that takes time: no cue marker, no grace note.
bool takesTime(const Item& item, float longest = longestNote);
/// Whether it would, if it were not too long.
bool isTooLong(const Item& item);
/// Whether it is a rest that lasts from the begin of its bar, wherever it is drawn.
bool isWholeBarRest(const Item& item);

/// A moment of a bar at which a note or rest of a staff begins.
struct Moment {
  Ticks time = 0;  ///< since the bar began
  float position = 0;
};

/// A bar of one staff.
struct StaffTime {
  bool plays = false;  ///< the staff has a note or rest in it
  Ticks length = 0;    ///< until the last one ends
  std::vector<Moment> moments;
  std::optional<float> wholeBarRest;  ///< where the first one is drawn
};

/// The time of the items of one bar of a staff, in the order of their positions. Those that take no time are ignored.
StaffTime staffTimeOf(std::span<const Item> items, float longest = longestNote);

/// The length in quarter notes that durations in page files stand for.
double inQuarters(Ticks length);

}  // namespace kiv::proof
