#include "drawing/page_picture.h"

#include <algorithm>
#include <vector>

#include "drawing/page_drawing.h"

namespace kiv {
namespace {

constexpr std::string_view style = R"(
svg { background: #fff; color: #111; }
.staffline { stroke: #444; stroke-width: 0.9; }
.ledger { stroke: #222; stroke-width: 1.3; }
.barline { stroke: #111; stroke-width: 1.6; }
.stem { stroke: #111; stroke-width: 1.3; }
.bracket { fill: none; stroke: #111; stroke-width: 3; }
.made { fill: #fbe6b8; }
.hidden { opacity: 0.4; }
.unknown, .sign { fill: #777; }
text { font-family: serif; font-size: 16px; fill: #111; }
.longtext { font-weight: bold; font-size: 19px; }
.shorttext { font-weight: bold; font-style: italic; font-size: 21px; }
.id { font-size: 13px; fill: #555; text-anchor: end; }
.cue { font-size: 12px; font-style: italic; text-anchor: middle; }
.legend, .systemlabel { font-size: 14px; fill: #333; }
.pagelabel { font-size: 17px; font-weight: bold; }
)";

constexpr double legendLine = 22;

/// A line of the legend, with the symbol that it explains.
struct LegendLine {
  enum class Symbol { none, unknown, generatedStaff };
  Symbol symbol = Symbol::none;
  std::string text;
};

std::vector<LegendLine> legendOf(const PageLayout& page, const PageDrawing& drawing) {
  std::vector<LegendLine> legend;
  std::size_t generated = 0;
  for (const PlacedStaff& staff : page.staves) {
    generated += staff.isGenerated ? 1 : 0;
  }
  if (generated > 0) {
    legend.push_back(
        {LegendLine::Symbol::generatedStaff, "rest staff, as a conversion inserts them: " + std::to_string(generated)});
  }
  constexpr std::size_t mostKinds = 20;
  std::size_t kinds = 0;
  std::size_t others = 0;
  for (const auto& [what, count] : drawing.unknown) {
    if (kinds++ < mostKinds) {
      legend.push_back({LegendLine::Symbol::unknown, what + ": " + std::to_string(count)});
    } else {
      others += count;
    }
  }
  if (others > 0) {
    legend.push_back({LegendLine::Symbol::unknown, "items of other kinds: " + std::to_string(others)});
  }
  if (page.strayItems > 0) {
    legend.push_back({LegendLine::Symbol::none, "items on no staff, not drawn: " + std::to_string(page.strayItems)});
  }
  return legend;
}

void drawLegend(PageDrawing& drawing, const std::vector<LegendLine>& legend, double y) {
  constexpr double textLeft = measure::margin + 30;
  for (const LegendLine& line : legend) {
    y += legendLine;
    if (line.symbol == LegendLine::Symbol::unknown) {
      drawing.glyph(Glyph::unknownSymbol, "sign", measure::margin + 10, y - 5);
    } else if (line.symbol == LegendLine::Symbol::generatedStaff) {
      drawing.svg.leaf("rect",
                       {{"class", "made"}, {"x", measure::margin}, {"y", y - 12}, {"width", 22.0}, {"height", 14.0}});
    }
    drawing.svg.text("text", {{"class", "legend"}, {"x", textLeft}, {"y", y}}, line.text);
  }
}

void drawTint(PageDrawing& drawing, const PlacedStaff& staff) {
  constexpr double beyond = 2;
  const double top = staff.y(staff.topLine() + beyond);
  drawing.svg.leaf("rect", {{"class", "made"},
                            {"x", staff.left},
                            {"y", top},
                            {"width", staff.right - staff.left},
                            {"height", staff.y(-beyond) - top}});
}

void drawStaff(PageDrawing& drawing, const PageLayout& page, const PlacedStaff& staff) {
  drawing.svg.open("g", {{"class", staff.lines == 0 ? "staff hidden" : "staff"}});
  drawStaffLines(drawing, staff);
  drawBarlines(drawing, page, staff);
  drawSignatures(drawing, page, staff);
  drawNotes(drawing, page, staff);
  drawStems(drawing, page, staff);
  drawRests(drawing, page, staff);
  drawTexts(drawing, page, staff);
  drawing.svg.close();
}

std::string definitions(const PageDrawing& drawing) {
  SvgWriter svg;
  svg.open("defs");
  for (const Glyph glyph : drawing.usedGlyphs) {
    svg.leaf("path", {{"id", shapeOf(glyph).name}, {"d", shapeOf(glyph).path}});
  }
  svg.close();
  return svg.markup();
}

}  // namespace

std::string pagePicture(std::span<const Item> items, std::string_view title) {
  const PageLayout page = layOut(items);
  PageDrawing drawing;
  for (const PlacedStaff& staff : page.staves) {
    if (staff.isGenerated) {
      drawTint(drawing, staff);
    }
  }
  for (std::size_t i = page.staves.size(); i-- > 0;) {
    drawStaff(drawing, page, page.staves[i]);
  }
  drawLabels(drawing, page, title);
  const std::vector<LegendLine> legend = legendOf(page, drawing);
  drawLegend(drawing, legend, page.height);
  constexpr double legendWidth = 500;
  const double width = std::max({page.width, titleWidth(title), legend.empty() ? 0 : legendWidth});
  const double height =
      page.height + (legend.empty() ? 0 : legendLine * static_cast<double>(legend.size()) + measure::margin);
  SvgWriter head;
  head.open("svg", {{"xmlns", "http://www.w3.org/2000/svg"},
                    {"width", width},
                    {"height", height},
                    {"viewBox", "0 0 " + svgNumber(width) + " " + svgNumber(height)}});
  head.text("title", {}, title);
  head.text("style", {}, style);
  head.leaf("rect", {{"width", width}, {"height", height}, {"fill", "#fff"}});
  return head.markup() + definitions(drawing) + drawing.svg.markup() + "</svg>\n";
}

}  // namespace kiv
