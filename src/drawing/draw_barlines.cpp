#include <algorithm>

#include "drawing/page_drawing.h"

namespace kiv {
namespace {

/// Where a vertical line across staves begins and ends. It extends beyond a staff of one line on both sides.
struct Reach {
  double top = 0;
  double bottom = 0;
};

Reach reachOf(const PlacedStaff& lower, const PlacedStaff& upper) {
  constexpr int beyondOneLine = 2;
  const auto beyond = [](const PlacedStaff& staff) { return staff.lines == 1 ? beyondOneLine : 0; };
  return {upper.y(upper.topLine() + beyond(upper)), lower.y(-beyond(lower))};
}

/// The outline of a brace with its ends at x and its tip to the left.
std::string brace(double x, Reach reach) {
  constexpr double depth = 12;
  const double middle = (reach.top + reach.bottom) / 2;
  const double nearEnd = (reach.bottom - reach.top) * 0.22;
  const double nearTip = (reach.bottom - reach.top) * 0.18;
  const auto point = [](double px, double py) { return svgNumber(px) + " " + svgNumber(py) + " "; };
  const auto toTip = [&](double endX, double endY, double tipX, double tipY) {
    return "C" + point(endX, endY) + point(tipX, tipY) + point(x - depth, middle);
  };
  const auto toEnd = [&](double tipX, double tipY, double endX, double endY, double y) {
    return "C" + point(tipX, tipY) + point(endX, endY) + point(x, y);
  };
  const double outer = x - 1.5 * depth;
  const double outerTip = x + 0.2 * depth;
  const double inner = x - 0.5 * depth;
  const double innerTip = x + 0.75 * depth;
  return "M" + point(x, reach.top) + toTip(outer, reach.top + nearEnd, outerTip, middle - nearTip) +
         toEnd(outerTip, middle + nearTip, outer, reach.bottom - nearEnd, reach.bottom) +
         toTip(inner, reach.bottom - nearEnd, innerTip, middle + nearTip) +
         toEnd(innerTip, middle - nearTip, inner, reach.top + nearEnd, reach.top) + "Z";
}

void drawBrace(PageDrawing& drawing, const Item& item, double x, Reach reach) {
  constexpr double leftOfStaff = 3;
  if (item[par::kind] == lowestBraceKind) {
    drawing.svg.leaf("path", {{"class", "brace"}, {"d", brace(x - leftOfStaff, reach)}});
    return;
  }
  constexpr double hook = 6;
  const double left = x - 2 * leftOfStaff;
  const auto end = svgNumber(left + hook);
  drawing.svg.leaf("path", {{"class", "bracket"},
                            {"d", "M" + end + " " + svgNumber(reach.top - 3) + "H" + svgNumber(left) + "V" +
                                      svgNumber(reach.bottom + 3) + "H" + end}});
}

}  // namespace

void drawBarlines(PageDrawing& drawing, const PageLayout& page, const PlacedStaff& staff) {
  for (const Item& item : staff.items) {
    if (item.type() != ItemType::barline) {
      continue;
    }
    const double x = page.x(item[par::position]);
    const Reach reach = reachOf(staff, page.upperEnd(staff, item[par::spannedStaves]));
    if (item[par::kind] <= highestBarlineKind) {
      drawing.line("barline", x, reach.top, x, reach.bottom);
    } else {
      drawBrace(drawing, item, x, reach);
    }
  }
}

}  // namespace kiv
