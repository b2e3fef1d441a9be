#include "drawing/page_drawing.h"

namespace kiv {

void PageDrawing::glyph(Glyph glyph, std::string_view className, double x, double y) {
  usedGlyphs.insert(glyph);
  svg.leaf("use", {{"class", className}, {"href", "#" + std::string(shapeOf(glyph).name)}, {"x", x}, {"y", y}});
}

void PageDrawing::line(std::string_view className, double x1, double y1, double x2, double y2) {
  svg.leaf("line", {{"class", className}, {"x1", x1}, {"y1", y1}, {"x2", x2}, {"y2", y2}});
}

void PageDrawing::unknownSymbol(const PlacedStaff& staff, double x, const std::string& what) {
  constexpr double aboveStaff = 4;
  ++unknown[what];
  glyph(Glyph::unknownSymbol, "unknown", x, staff.y(staff.topLine() + aboveStaff));
}

void drawStaffLines(PageDrawing& drawing, const PlacedStaff& staff) {
  for (int i = 0; i < staff.lines; ++i) {
    drawing.line("staffline", staff.left, staff.y(2 * i), staff.right, staff.y(2 * i));
  }
}

}  // namespace kiv
