#include <cmath>

#include "drawing/note_value.h"
#include "drawing/page_drawing.h"

namespace kiv {
namespace {

constexpr double ledgerReach = 10;
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

}  // namespace

void drawNotes(PageDrawing& drawing, const PageLayout& page, const PlacedStaff& staff) {
  for (const Item& item : staff.items) {
    if (item.type() == ItemType::note) {
      drawHead(drawing, staff, page.x(item[par::position]), item);
    }
  }
}

}  // namespace kiv
