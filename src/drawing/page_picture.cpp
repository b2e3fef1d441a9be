#include "drawing/page_picture.h"

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

#include "drawing/page_drawing.h"

namespace kiv {
namespace {

constexpr std::string_view pageStyle = R"(
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

constexpr std::string_view styleOfMarks = R"(
.mark { fill: none; stroke: #b3261e; stroke-width: 2.5; }
.says { font-family: sans-serif; font-size: 12px; font-weight: bold; fill: #b3261e; }
)";

constexpr double legendLine = 22;

/// A line of the legend, with the symbol that it explains.
struct LegendLine {
  enum class Symbol { none, unknown, generatedStaff, mark };
  Symbol symbol = Symbol::none;
  std::string text;
};

std::vector<LegendLine> legendOf(const PageLayout& page, const PageDrawing& drawing, std::size_t marks) {
  std::vector<LegendLine> legend;
  std::size_t generated = 0;
  for (const PlacedStaff& staff : page.staves) {
    generated += staff.isGenerated ? 1 : 0;
  }
  if (generated > 0) {
    legend.push_back(
        {LegendLine::Symbol::generatedStaff, "rest staff, as a conversion inserts them: " + std::to_string(generated)});
  }
  if (marks > 0) {
    legend.push_back(
        {LegendLine::Symbol::mark, "does not fit the music (lengths in quarters): " + std::to_string(marks)});
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
    } else if (line.symbol == LegendLine::Symbol::mark) {
      drawing.svg.leaf("rect",
                       {{"class", "mark"}, {"x", measure::margin}, {"y", y - 12}, {"width", 22.0}, {"height", 14.0}});
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

/// Frames what is marked, and writes the words above it where there is space. Returns how many marks there are.
std::size_t drawMarks(PageDrawing& drawing, const PageLayout& page, std::span<const PageMark> marks) {
  constexpr double beyond = 3;
  constexpr double beside = 3;
  constexpr double lineHeight = 13;
  std::size_t drawn = 0;
  std::map<std::pair<float, double>, int> lines;  // of words, at each place
  for (const PageMark& mark : marks) {
    const auto staff = std::find_if(page.staves.begin(), page.staves.end(),
                                    [&](const PlacedStaff& one) { return one.number == mark.staff; });
    if (staff == page.staves.end()) {
      continue;
    }
    ++drawn;
    const double margin = mark.from == mark.to ? 2 * measure::position : -beside;
    const double left = page.x(mark.from) - margin;
    const double right = std::max(std::min(page.x(mark.to), staff->right) + margin, left);
    const double top = staff->y(staff->topLine() + beyond);
    drawing.svg.open("g");
    drawing.svg.text("title", {}, mark.words);
    drawing.svg.leaf(
        "rect",
        {{"class", "mark"}, {"x", left}, {"y", top}, {"width", right - left}, {"height", staff->y(-beyond) - top}});
    const int line = lines[{mark.staff, left}]++;
    drawing.svg.text("text", {{"class", "says"}, {"x", left}, {"y", top - 4 - lineHeight * line}}, mark.words);
    drawing.svg.close();
  }
  return drawn;
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

std::string pagePicture(std::span<const Item> items, std::string_view title, std::span<const PageMark> marks) {
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
  const std::vector<LegendLine> legend = legendOf(page, drawing, drawMarks(drawing, page, marks));
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
  head.text("style", {}, std::string(pageStyle) + std::string(marks.empty() ? "" : styleOfMarks.substr(1)));
  head.leaf("rect", {{"width", width}, {"height", height}, {"fill", "#fff"}});
  return head.markup() + definitions(drawing) + drawing.svg.markup() + "</svg>\n";
}

}  // namespace kiv
