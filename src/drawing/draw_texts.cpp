#include <algorithm>

#include "base/number.h"
#include "drawing/page_drawing.h"

namespace kiv {
namespace {

std::string_view classOf(float type) {
  if (type == type::shortText) {
    return "shorttext";
  }
  return type == type::text ? "longtext" : "countedtext";
}

std::string_view withoutBlanks(std::string_view text) {
  const auto end = text.find_last_not_of(' ');
  return text.substr(0, end == std::string_view::npos ? 0 : end + 1);
}

bool isDrawnElsewhere(float type) {
  return type == type::note || type == type::rest || type == type::clef || type == type::barline ||
         type == type::keySignature || type == type::timeSignature;
}

void drawIdentifier(PageDrawing& drawing, const PlacedStaff& staff, double x, float instrument) {
  constexpr double belowMiddle = 1;
  drawing.svg.text("text", {{"class", "id"}, {"x", x}, {"y", staff.y(staff.middle() - belowMiddle)}},
                   generalNumber(instrument));
}

bool showsItsNumber(const PlacedStaff& staff) {
  return std::any_of(staff.items.begin(), staff.items.end(),
                     [](const Item& item) { return item.par[par::type] == type::instrumentNumber; });
}

}  // namespace

void drawTexts(PageDrawing& drawing, const PageLayout& page, const PlacedStaff& staff) {
  constexpr double leftOfStaff = 20;
  if (!showsItsNumber(staff)) {
    drawIdentifier(drawing, staff, staff.left - leftOfStaff, staff.instrument);
  }
  for (const Item& item : staff.items) {
    const float type = item.par[par::type];
    const double x = page.x(item.par[par::position]);
    if (isTextType(type)) {
      drawing.svg.text("text", {{"class", classOf(type)}, {"x", x}, {"y", staff.y(drawnHeight(item.par[par::height]))}},
                       withoutBlanks(item.text));
    } else if (type == type::instrumentNumber) {
      drawIdentifier(drawing, staff, x, item.par[par::shownNumber]);
    } else if (!isDrawnElsewhere(type)) {
      drawing.unknownSign(staff, x, "item of type " + generalNumber(type));
    }
  }
}

}  // namespace kiv
