#include <cmath>

#include "base/number.h"
#include "drawing/note_value.h"
#include "drawing/page_drawing.h"

namespace kiv {
namespace {

constexpr float wholeBar = -2;
constexpr float wholeBarToo = -12;

bool lastsABar(const Item& rest) {
  return rest[par::kind] == wholeBar || rest[par::kind] == wholeBarToo;
}

/// A rest shorter than a quarter: hooks on a slanting stem.
void drawHooks(PageDrawing& drawing, double x, double y, int hooks) {
  constexpr double slant = 2.5;  // to the left, for the distance of two lines
  const double top = y - (hooks > 2 ? measure::space : 0);
  for (int i = 0; i < hooks; ++i) {
    drawing.glyph(Glyph::restHook, "rest", x - slant * i, top + measure::space * i);
  }
  constexpr double stemTop = -6;
  const double length = measure::space * hooks + 6;
  drawing.line("stem", x + 4, top + stemTop, x + 4 - slant * length / measure::space, top + stemTop + length);
}

void drawRest(PageDrawing& drawing, const PlacedStaff& staff, double x, const Item& rest) {
  // A rest's height moves it from the middle.
  const double height = staff.middle() + drawnHeight(rest[par::height]);
  const NoteValue value = noteValue(rest[par::duration]);
  if (lastsABar(rest) || value.isWhole()) {
    const double line = staff.lines == 1 ? height : height + 2;
    drawing.glyph(Glyph::wholeRest, "rest", x, staff.y(line));
  } else if (value.isHalf()) {
    drawing.glyph(Glyph::halfRest, "rest", x, staff.y(height));
  } else if (value.flags() == 0) {
    drawing.glyph(Glyph::quarterRest, "rest", x, staff.y(height));
  } else {
    drawHooks(drawing, x, staff.y(height), value.flags());
  }
  for (int i = 0; i < (lastsABar(rest) ? 0 : value.dots); ++i) {
    drawing.glyph(Glyph::dot, "dot", x + 12 + 6 * i, staff.y(height + 1));
  }
  if (rest[par::cuedInstrument] != 0) {
    constexpr double aboveStaff = 3;
    drawing.svg.text("text", {{"class", "cue"}, {"x", x}, {"y", staff.y(staff.topLine() + aboveStaff)}},
                     "cue " + generalNumber(rest[par::cuedInstrument]));
  }
}

}  // namespace

void drawRests(PageDrawing& drawing, const PageLayout& page, const PlacedStaff& staff) {
  for (const Item& item : staff.items) {
    if (item.type() == ItemType::rest) {
      drawRest(drawing, staff, page.x(item[par::position]), item);
    }
  }
}

}  // namespace kiv
