#pragma once

#include <cstddef>
#include <vector>

#include "drawing/note_value.h"
#include "drawing/page_layout.h"

namespace kiv {

/// The notes of a staff at one position, which share a stem.
struct Chord {
  double x = 0;
  float position = 0;
  std::vector<const Item*> notes;
  NoteValue value;
  double lowest = 0;   ///< height of the lowest note, in steps above the bottom line
  double highest = 0;  ///< height of the highest note
};

/// The chords of the staff from left to right. The items must outlive them.
std::vector<Chord> chordsOf(const PageLayout& page, const PlacedStaff& staff);

/// Neighboring chords that a beam joins: those from the first to before the end, at least two.
struct BeamGroup {
  std::size_t first = 0;
  std::size_t end = 0;
};

/// The beams of a staff, from left to right. Page items that are beams are unknown, so beams follow the beats of the
/// time signature, as the eyes of a musician expect. A bar of which the durations do not say where its beats are, as
/// that of two voices on one staff, has none.
std::vector<BeamGroup> beamsOf(const PageLayout& page, const PlacedStaff& staff, const std::vector<Chord>& chords);

}  // namespace kiv
