#include <algorithm>
#include <cmath>
#include <vector>

#include "drawing/note_value.h"
#include "drawing/page_drawing.h"

namespace kiv {
namespace {

constexpr double headHalf = 6;  // half the width of a head with a stem
constexpr double ledgerReach = 10;
constexpr double stemSteps = 7;
constexpr double flagDistance = 8;
constexpr double firstDot = 12;
constexpr double dotDistance = 6;

Glyph headOf(const NoteValue& value) {
  if (value.isWhole()) {
    return Glyph::wholeHead;
  }
  return value.isHalf() ? Glyph::halfHead : Glyph::blackHead;
}

void drawLedgerLines(PageDrawing& drawing, const PlacedStaff& staff, double x, double height) {
  for (int line = -2; line >= height; line -= 2) {
    drawing.line("ledger", x - ledgerReach, staff.y(line), x + ledgerReach, staff.y(line));
  }
  for (int line = staff.topLine() + 2; line <= height; line += 2) {
    drawing.line("ledger", x - ledgerReach, staff.y(line), x + ledgerReach, staff.y(line));
  }
}

void drawDots(PageDrawing& drawing, const PlacedStaff& staff, double x, double height, int dots) {
  const bool onLine = std::fmod(std::abs(height), 2.0) < 1;
  for (int i = 0; i < dots; ++i) {
    drawing.glyph(Glyph::dot, "dot", x + firstDot + dotDistance * i, staff.y(height + (onLine ? 1 : 0)));
  }
}

void drawHead(PageDrawing& drawing, const PlacedStaff& staff, double x, const Item& note) {
  const NoteValue value = noteValue(note[par::duration]);
  const double height = drawnHeight(note[par::height]);
  drawLedgerLines(drawing, staff, x, height);
  drawing.glyph(headOf(value), "note", x, staff.y(height));
  drawDots(drawing, staff, x, height, value.dots);
}

/// The stem that the notes of a chord share; it points away from the note farthest from the middle line.
void drawStem(PageDrawing& drawing, const PlacedStaff& staff, double x, const std::vector<const Item*>& chord) {
  const NoteValue value = noteValue((*chord.front())[par::duration]);
  if (value.isWhole()) {
    return;
  }
  double lowest = drawnHeight((*chord.front())[par::height]);
  double highest = lowest;
  for (const Item* note : chord) {
    lowest = std::min(lowest, drawnHeight((*note)[par::height]));
    highest = std::max(highest, drawnHeight((*note)[par::height]));
  }
  const bool up = highest - staff.middle() < staff.middle() - lowest;
  const double stemX = up ? x + headHalf - 0.5 : x - headHalf + 0.5;
  // Stems of notes far out come back to the middle line.
  const double end =
      staff.y(up ? std::max(highest + stemSteps, staff.middle()) : std::min(lowest - stemSteps, staff.middle()));
  drawing.line("stem", stemX, staff.y(up ? lowest + 0.5 : highest - 0.5), stemX, end);
  for (int i = 0; i < value.flags(); ++i) {
    drawing.glyph(up ? Glyph::flagUp : Glyph::flagDown, "flag", stemX, end + (up ? 1 : -1) * flagDistance * i);
  }
}

}  // namespace

void drawNotes(PageDrawing& drawing, const PageLayout& page, const PlacedStaff& staff) {
  std::vector<const Item*> notes;
  for (const Item& item : staff.items) {
    if (item.type() == ItemType::note) {
      notes.push_back(&item);
    }
  }
  // A position that is a NaN has an x, too.
  const auto xOf = [&](const Item* note) { return page.x((*note)[par::position]); };
  std::stable_sort(notes.begin(), notes.end(), [&](const Item* a, const Item* b) { return xOf(a) < xOf(b); });
  for (std::size_t first = 0; first < notes.size();) {
    const double x = xOf(notes[first]);
    std::vector<const Item*> chord;
    for (; first < notes.size() && xOf(notes[first]) == x; ++first) {
      drawHead(drawing, staff, x, *notes[first]);
      chord.push_back(notes[first]);
    }
    drawStem(drawing, staff, x, chord);
  }
}

}  // namespace kiv
