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

/// What time depends on of a note or a rest.
struct MusicNote {
  ItemType type;
  float position = 0;
  float kind = 0;            ///< of a rest
  float duration = 0;        ///< in quarter notes
  float cuedInstrument = 0;  ///< of a cue marker
};

/// Whether it is no cue marker.
inline bool isPlayed(const MusicNote& note) {
  return note.type == ItemType::note || note.cuedInstrument == 0;
}
/// Whether a note or a rest takes time: it is no cue marker, and no grace note.
inline bool takesTime(const MusicNote& note, float longest = longestNote) {
  return isPlayed(note) && note.duration <= longest && note.duration >= static_cast<float>(leastTime) / quarterNote;
}
/// Whether it would, if it were not too long.
inline bool isTooLong(const MusicNote& note) {
  return isPlayed(note) && note.duration > longestNote;
}
/// Whether it is a rest that lasts from the begin of its bar, wherever it is drawn.
inline bool isWholeBarRest(const MusicNote& note) {
  constexpr float wholeBar = -2;
  constexpr float wholeBarToo = -12;
  return note.type == ItemType::rest && (note.kind == wholeBar || note.kind == wholeBarToo);
}

/// A moment of a bar at which a note or rest of a staff begins.
struct Moment {
  Ticks time = 0;  ///< since the bar began
  float position = 0;
};

/// A bar of one staff.
struct StaffTime {
  bool plays = false;                      ///< the staff has a note or rest in it
  bool hasMoments = false;                 ///< and one of them is no whole-bar rest
  Ticks length = 0;                        ///< until the last one ends
  std::optional<float> wholeBarRest = {};  ///< where the first one is drawn
};

/// Follows the notes and rests of bars of single staves, in the order of their positions. Those that take no time are
/// ignored.
class BarClock {
 public:
  explicit BarClock(float longest = longestNote) : longest_(longest) {}

  StaffTime timeOf(std::span<const MusicNote> notes);
  std::vector<Moment> momentsOf(std::span<const MusicNote> notes);

 private:
  template <typename OnMoment>
  StaffTime follow(std::span<const MusicNote> notes, const OnMoment& onMoment);
  Ticks passOn();

  float longest_;            // what lasts longer takes no time
  std::vector<Ticks> ends_;  // of what sounds: a chord, or voices; a member to save allocations
};

/// The length in quarter notes that durations in page files stand for.
double inQuarters(Ticks length);

}  // namespace kiv::proof
