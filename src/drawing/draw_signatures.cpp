#include <array>
#include <cmath>
#include <optional>

#include "base/number.h"
#include "drawing/page_drawing.h"

namespace kiv {
namespace {

constexpr float treble = 0;
constexpr float bass = 1;
constexpr float alto = 2;

/// Symbols with a line of their own on a staff of five lines are centered on any other staff.
double raisedBy(const PlacedStaff& staff) {
  constexpr double middleOfFive = 4;
  return staff.middle() - middleOfFive;
}

void drawClef(PageDrawing& drawing, const PlacedStaff& staff, double x, const Item& item) {
  const float kind = item[par::kind];
  // A clef's height moves it from its normal line.
  const double height = drawnHeight(item[par::height]) + raisedBy(staff);
  constexpr double trebleMiddle = 13;
  if (kind == treble) {
    drawing.glyph(Glyph::trebleClef, "clef", x + trebleMiddle, staff.y(2 + height));
  } else if (kind == bass) {
    drawing.glyph(Glyph::bassClef, "clef", x, staff.y(6 + height));
  } else if (kind == alto) {
    drawing.glyph(Glyph::altoClef, "clef", x, staff.y(4 + height));
  } else {
    drawing.unknownSymbol(staff, x, "clef of kind " + generalNumber(kind));
  }
}

constexpr int mostAccidentals = 7;
using Heights = std::array<int, mostAccidentals>;
constexpr Heights sharpHeights = {8, 5, 9, 6, 3, 7, 4};
constexpr Heights flatHeights = {4, 7, 3, 6, 2, 5, 1};

/// How much lower the accidentals are than under a treble clef.
int loweredBy(float keyType) {
  if (keyType == bass) {
    return 2;
  }
  return keyType == alto ? 1 : 0;
}

void drawKey(PageDrawing& drawing, const PlacedStaff& staff, double x, const Item& item) {
  const float key = item[par::key];
  const bool known = key == std::trunc(key) && std::abs(key) <= mostAccidentals;
  if (!known) {
    drawing.unknownSymbol(staff, x, "key signature of " + generalNumber(key));
    return;
  }
  constexpr double distance = 10;
  const auto count = static_cast<std::size_t>(std::abs(key));
  for (std::size_t i = 0; i < count; ++i) {
    const int height = (key > 0 ? sharpHeights : flatHeights)[i] - loweredBy(item[par::keyType]);
    drawing.glyph(key > 0 ? Glyph::sharp : Glyph::flat, "accidental", x + 5 + distance * static_cast<double>(i),
                  staff.y(height + raisedBy(staff)));
  }
}

/// The digits of a number that a time signature may have.
std::optional<std::string> digitsOf(float number) {
  constexpr float highest = 999;
  if (!(number >= 1 && number <= highest) || number != std::trunc(number)) {
    return std::nullopt;
  }
  return std::to_string(static_cast<int>(number));
}

void drawDigits(PageDrawing& drawing, const std::string& digits, double middle, double y) {
  constexpr double width = 17;
  double x = middle - width * (static_cast<double>(digits.size()) - 1) / 2;
  for (const char digit : digits) {
    drawing.glyph(digitGlyph(digit - '0'), "digit", x, y);
    x += width;
  }
}

void drawTime(PageDrawing& drawing, const PlacedStaff& staff, double x, const Item& item) {
  constexpr float commonTime = 99;
  constexpr float allaBreve = 98;
  constexpr double symbolMiddle = 9;
  const float upper = item[par::upperNumber];
  const double middle = x + symbolMiddle;
  if (upper == commonTime || upper == allaBreve) {
    drawing.glyph(Glyph::commonTime, "digit", middle, staff.y(staff.middle()));
    if (upper == allaBreve) {
      drawing.glyph(Glyph::cutStroke, "digit", middle, staff.y(staff.middle()));
    }
    return;
  }
  const auto above = digitsOf(upper);
  const auto below = digitsOf(item[par::lowerNumber]);
  if (!above || !below) {
    drawing.unknownSymbol(staff, x,
                          "time signature " + generalNumber(upper) + "/" + generalNumber(item[par::lowerNumber]));
    return;
  }
  drawDigits(drawing, *above, middle, staff.y(staff.middle() + 2));
  drawDigits(drawing, *below, middle, staff.y(staff.middle() - 2));
}

}  // namespace

void drawSignatures(PageDrawing& drawing, const PageLayout& page, const PlacedStaff& staff) {
  for (const Item& item : staff.items) {
    const ItemType type = item.type();
    const double x = page.x(item[par::position]);
    if (type == ItemType::clef) {
      drawClef(drawing, staff, x, item);
    } else if (type == ItemType::keySignature) {
      drawKey(drawing, staff, x, item);
    } else if (type == ItemType::timeSignature) {
      drawTime(drawing, staff, x, item);
    }
  }
}

}  // namespace kiv
