#include <algorithm>

#include "drawing/page_drawing.h"
#include "drawing/text_width.h"

namespace kiv {
namespace {

constexpr double titleSize = 17;
constexpr double longestTitle = 30;  // font sizes

/// How many bars the staff has; music after the last barline is one.
std::size_t barsOf(const PageLayout& page, const PlacedStaff& staff) {
  const std::vector<double> barlines = page.barlinesOf(staff);
  const double last = barlines.empty() ? 0 : barlines.back();
  const bool continues = std::any_of(staff.items.begin(), staff.items.end(), [&](const Item& item) {
    return (item.type() == ItemType::note || item.type() == ItemType::rest) && page.x(item[par::position]) > last;
  });
  return barlines.size() + (continues ? 1 : 0);
}

std::string barNumbers(std::size_t first, std::size_t count) {
  if (count == 0) {
    return "";
  }
  const std::string numbers = std::to_string(first);
  return count == 1 ? ", bar " + numbers : ", bars " + numbers + " to " + std::to_string(first + count - 1);
}

}  // namespace

double titleWidth(std::string_view title) {
  return 2 * measure::margin + titleSize * widthOfText(cutAtEnd(title, longestTitle));
}

void drawLabels(PageDrawing& drawing, const PageLayout& page, std::string_view title) {
  constexpr double titleLine = 16;
  drawing.svg.text("text", {{"class", "pagelabel"}, {"x", measure::margin}, {"y", measure::margin + titleLine}},
                   cutAtEnd(title, longestTitle));
  std::size_t system = 0;
  std::size_t bar = 1;
  for (std::size_t i = page.staves.size(); i-- > 0;) {
    const PlacedStaff& staff = page.staves[i];
    if (staff.label == 0) {
      continue;
    }
    const std::size_t bars = barsOf(page, staff);
    drawing.svg.text("text", {{"class", "systemlabel"}, {"x", measure::margin}, {"y", staff.label}},
                     "system " + std::to_string(++system) + barNumbers(bar, bars));
    bar += bars;
  }
}

}  // namespace kiv
