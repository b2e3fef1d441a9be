#include "drawing/chords.h"

#include <algorithm>

namespace kiv {

std::vector<Chord> chordsOf(const PageLayout& page, const PlacedStaff& staff) {
  std::vector<const Item*> notes;
  for (const Item& item : staff.items) {
    if (item.type() == ItemType::note) {
      notes.push_back(&item);
    }
  }
  // A position that is a NaN has an x, too.
  const auto xOf = [&](const Item* note) { return page.x((*note)[par::position]); };
  std::stable_sort(notes.begin(), notes.end(), [&](const Item* a, const Item* b) { return xOf(a) < xOf(b); });
  std::vector<Chord> chords;
  for (const Item* note : notes) {
    const double height = drawnHeight((*note)[par::height]);
    if (chords.empty() || chords.back().x != xOf(note)) {
      chords.push_back({xOf(note), (*note)[par::position], {}, noteValue((*note)[par::duration]), height, height});
    }
    Chord& chord = chords.back();
    chord.notes.push_back(note);
    chord.lowest = std::min(chord.lowest, height);
    chord.highest = std::max(chord.highest, height);
  }
  return chords;
}

}  // namespace kiv
