#include <algorithm>

#include "base/number.h"
#include "drawing/page_drawing.h"

namespace kiv {
namespace {

std::string_view classOf(ItemType type) {
  if (type == ItemType::shortText) {
    return "shorttext";
  }
  return type == ItemType::text ? "longtext" : "countedtext";
}

std::string_view withoutBlanks(std::string_view text) {
  const auto end = text.find_last_not_of(' ');
  return text.substr(0, end == std::string_view::npos ? 0 : end + 1);
}

bool isDrawnElsewhere(ItemType type) {
  return type == ItemType::note || type == ItemType::rest || type == ItemType::clef || type == ItemType::barline ||
         type == ItemType::keySignature || type == ItemType::timeSignature;
}

void drawIdentifier(PageDrawing& drawing, const PlacedStaff& staff, double x, float instrument) {
  constexpr double belowMiddle = 1;
  drawing.svg.text("text", {{"class", "id"}, {"x", x}, {"y", staff.y(staff.middle() - belowMiddle)}},
                   generalNumber(instrument));
}

bool showsItsNumber(const PlacedStaff& staff) {
  return std::any_of(staff.items.begin(), staff.items.end(),
                     [](const Item& item) { return item.type() == ItemType::instrumentNumber; });
}

}  // namespace

void drawTexts(PageDrawing& drawing, const PageLayout& page, const PlacedStaff& staff) {
  constexpr double leftOfStaff = 20;
  if (!showsItsNumber(staff)) {
    drawIdentifier(drawing, staff, staff.left - leftOfStaff, staff.instrument);
  }
  for (const Item& item : staff.items) {
    const ItemType type = item.type();
    const double x = page.x(item[par::position]);
    if (type.hasText()) {
      drawing.svg.text("text", {{"class", classOf(type)}, {"x", x}, {"y", staff.y(drawnHeight(item[par::height]))}},
                       withoutBlanks(item.text));
    } else if (type == ItemType::instrumentNumber) {
      drawIdentifier(drawing, staff, x, item[par::shownNumber]);
    } else if (!isDrawnElsewhere(type)) {
      drawing.unknownSymbol(staff, x, "item of type " + generalNumber(type.number()));
    }
  }
}

}  // namespace kiv
