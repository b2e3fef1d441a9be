#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

#include "mus/item_table.h"

namespace kiv::fit {

/// The identifier of a staff item's instrument, rounded to a whole number; NaN when 16 bits do not hold it.
float instrumentOf(const Item& staff);

/// A note or rest that carries time: no cue marker, no grace note.
struct Beat {
  float position = 0;
  double duration = 0;     ///< in quarter notes
  bool lastsABar = false;  ///< a whole-bar rest, which begins with the bar wherever it is drawn
};

/// A real staff of a system.
struct Staff {
  Item staff;
  std::vector<Item> items;  ///< all but the staff item, by position
  std::vector<Beat> beats;  ///< by position

  /// The identifier as reports have it, a whole number; NaN when it is none of 16 bits.
  float instrument() const { return instrumentOf(staff); }
};

/// A barline that all staves of the system will have.
struct Barline {
  float position = 0;
  std::int16_t kind = 0;
};

/// A bar that rest staves fill. Barlines that hold no music, as the two items of a double bar, bound none.
struct Bar {
  float begin = 0;
  float end = 0;
  bool isOpen = false;        ///< no barline ends it; end is 10 right of its music then
  bool isEmpty = false;       ///< no staff has music in it
  bool opensSection = false;  ///< a barline before it, in this system, is no plain one
  float firstBeat = 0;        ///< where its music begins; of an empty bar its end
  float spaceBegin = 0;       ///< a whole-bar rest is drawn in the middle between here and its end
};

/// The real staves of a system, and its bars.
struct System {
  std::vector<Staff> staves;  ///< from the top down
  std::vector<Bar> bars;
  bool closesSection = false;  ///< a barline after the last bar is no plain one
  float leftEdge = 0;          ///< where its staves begin

  /// The number of bars before a position: signatures there count from the bar with that index on.
  std::size_t barAfter(float position) const;
};

/// The barlines are sorted by position.
System systemOf(const ItemTable& items, const std::vector<Barline>& barlines);

/// The beats of a staff in a bar.
std::vector<Beat> beatsIn(const Staff& staff, const Bar& bar);

/// How time runs through a bar of one staff.
struct BarTime {
  double length = 0;               ///< where its last note or rest ends
  std::map<double, float> onsets;  ///< where the moments are drawn at which notes or rests begin
};

/// The time of beats, of which there is at least one: each position follows where the first of the sounding notes and
/// rests ends.
BarTime timeOf(const std::vector<Beat>& beats);

}  // namespace kiv::fit
