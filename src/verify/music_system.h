#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "verify/music_staff.h"

namespace kiv::proof {

struct MusicBarline {
  float position = 0;
  std::int16_t kind = 0;
};

/// A bar of a system: what lies between two barlines, and is more than the space in a double bar.
struct MusicBar {
  float from = 0;
  float to = 0;  ///< the next barline; where there is none, right of all music
  bool beginsSection = false;
  float music = 0;               ///< the first note or rest; of an empty bar: its end
  float space = 0;               ///< whole-bar rests stand in the middle between here and its end
  bool isLast = false;           ///< there is no next barline
  std::vector<StaffTime> times;  ///< of each staff

  bool isEmpty() const;
  /// Where a moment is drawn: where one of those does, else between the moments before and after it.
  float positionOf(Ticks moment, const std::vector<Moment>& moments, Ticks length) const;
  /// Where a whole-bar rest is drawn.
  float positionOfWholeBarRest(Ticks length) const;
};

/// A system as music: the staves that play, from the top down, and its bars.
class MusicSystem {
 public:
  /// Barlines are those of all staves, by position.
  MusicSystem(std::vector<MusicStaff> staves, const std::vector<MusicBarline>& barlines);

  const std::vector<MusicStaff>& staves() const { return staves_; }
  const std::vector<MusicBar>& bars() const { return bars_; }
  bool endsSection() const { return endsSection_; }
  /// Where notes or rests are too long to be counted: the bar, or nullopt for between bars.
  const std::vector<std::optional<std::size_t>>& tooLong() const { return tooLong_; }
  float leftEdge() const;
  /// Whether a staff is the highest of its instrument. One with an identifier of more than 16 bits is of none.
  bool isFirstOfInstrument(std::size_t staff) const;
  /// The bar from which on a signature at this position counts; the number of bars for one after all music.
  std::size_t barFrom(float position) const;
  /// The moments of the staves that last as long as a bar of that length, in their order; of the same moment that of
  /// the highest staff.
  std::vector<Moment> momentsOf(const MusicBar& bar, Ticks length) const;
  /// The signatures of a type on a staff by the bar from which on they count.
  std::map<std::size_t, std::vector<Item>> signatures(const MusicStaff& staff, ItemType type) const;

 private:
  void addBar(const MusicBarline& barline, const float* next, bool isLeftEdge, BarClock& clock);

  std::vector<MusicStaff> staves_;
  std::vector<MusicBar> bars_;
  bool endsSection_ = false;
  std::vector<std::optional<std::size_t>> tooLong_;
};

}  // namespace kiv::proof
