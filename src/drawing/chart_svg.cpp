#include <algorithm>

#include "drawing/chart_drawings.h"
#include "drawing/chart_layout.h"
#include "drawing/chart_panel.h"
#include "drawing/chart_symbols.h"
#include "drawing/text_width.h"

namespace kiv {
namespace {

constexpr std::string_view chartStyle = R"(
text { font-family: serif; fill: #222; font-size: 3px; }
.title { font-size: 5px; font-weight: bold; }
.summary { font-size: 3.6px; }
.instrument, .sheetnumber { text-anchor: end; }
.multifile { fill: #dbe7f5; }
.page { fill: none; stroke: #222; stroke-width: 0.2; }
)";

// A browser prints whole pixels. Sheets of 210 mm would be a fraction lower than its pages, and drift over the end of
// the page one after the other.
constexpr double sheetPixelsAcross = 1123;
constexpr double sheetPixels = 793;
constexpr std::string_view printStyle = "@page { size: 1123px 793px; margin: 0; }\n";

/// The explanations of what the chart shows, from left to right.
class Legend {
 public:
  Legend(SvgWriter& svg, double y) : svg_(svg), y_(y) {}

  void symbol(CellSymbol symbol, const char* meaning) {
    const CellCorner corner{x_, y_};
    drawSymbols(svg_, symbol, {&corner, 1}, symbolSize);
    text(meaning);
  }
  void tint(const char* name, const char* meaning) {
    svg_.leaf("rect", {{"class", name}, {"x", x_}, {"y", y_}, {"width", symbolSize}, {"height", symbolSize}});
    text(meaning);
  }
  /// On the next line.
  void line(const std::string& content) {
    constexpr double nextLine = 6;
    svg_.text("text", {{"class", "order"}, {"x", sheet::margin}, {"y", y_ + nextLine + baseline}}, content);
  }

 private:
  static constexpr double symbolSize = 5;
  static constexpr double baseline = 3.6;

  void text(const char* meaning) {
    constexpr double textOffset = 6;
    constexpr double distance = 4;
    svg_.text("text", {{"class", "meaning"}, {"x", x_ + textOffset}, {"y", y_ + baseline}}, meaning);
    x_ += textOffset + sheet::fontSize * widthOfText(meaning) * usualPart + distance;
  }

  // The widest fonts are hardly used, and these texts are known.
  static constexpr double usualPart = 0.85;

  SvgWriter& svg_;
  double y_;
  double x_ = sheet::margin;
};

/// The legend of a sheet, whose systems are from the first to before the end.
void drawLegend(SvgWriter& svg, const Chart& chart, const ChartPanel& first, const ChartPanel& last, double y) {
  svg.open("g", {{"class", "legend"}});
  Legend legend(svg, y);
  for (const Presence presence : {Presence::present, Presence::missing, Presence::duplicate, Presence::zeroId}) {
    if (chart.count(presence) > 0) {
      legend.symbol(symbolOf(presence), meaningOf(presence));
    }
  }
  if (chart.hasMovedStaves()) {
    legend.symbol(CellSymbol::moved, meaningOfMoved);
  }
  if (chart.hasMultifilePages()) {
    legend.tint("multifile", "page of several files");
  }
  if (const std::string systems = chart.outOfOrder(first.firstSystem, last.endSystem); !systems.empty()) {
    legend.line("Staves in another order than in a result: system " + systems);
  }
  svg.close();
}

/// The title, what the chart counts, and which of several sheets this is.
void drawTitle(SvgWriter& svg, const Chart& chart, std::size_t sheetIndex, std::size_t sheets) {
  constexpr double titleLine = 4.5;
  constexpr double nextLine = 9.5;
  constexpr double longestTitle = 40;  // font sizes
  const std::string title = chart.piece.empty() ? "Systems by instruments" : chart.piece;
  svg.text("text", {{"class", "title"}, {"x", sheet::margin}, {"y", sheet::margin + titleLine}},
           cutAtEnd(title, longestTitle));
  svg.text("text", {{"class", "summary"}, {"x", sheet::margin}, {"y", sheet::margin + nextLine}}, chart.counts());
  if (sheets > 1) {
    svg.text("text", {{"class", "sheetnumber"}, {"x", sheet::width - sheet::margin}, {"y", sheet::margin + titleLine}},
             "sheet " + std::to_string(sheetIndex + 1) + " of " + std::to_string(sheets));
  }
}

using Panels = std::vector<ChartPanel>::const_iterator;

void drawSheet(SvgWriter& svg, const Chart& chart, const ChartLayout& layout, Panels first, Panels end) {
  const std::size_t index = first == end ? 0 : first->sheet;
  const double top = sheet::height * static_cast<double>(index);
  svg.open("g", {{"class", "sheet"}, {"transform", "translate(0 " + svgNumber(top) + ")"}});
  drawTitle(svg, chart, index, layout.sheets);
  for (auto panel = first; panel != end; ++panel) {
    drawPanel(svg, chart, layout, *panel);
  }
  if (first != end) {
    drawLegend(svg, chart, *first, *(end - 1), layout.bottom(*(end - 1)) + sheet::rowGap);
  }
  svg.close();
}

void openDrawing(SvgWriter& svg, const Chart& chart, std::size_t sheets) {
  const auto count = static_cast<double>(sheets);
  const double height = sheet::height * count;
  svg.open("svg", {{"xmlns", "http://www.w3.org/2000/svg"},
                   {"width", sheetPixelsAcross},
                   {"height", svgNumber(sheetPixels * count)},
                   {"viewBox", "0 0 " + svgNumber(sheet::width) + " " + svgNumber(height)}});
  svg.text("title", {}, (chart.piece.empty() ? "" : chart.piece + ": ") + "systems by instruments");
  svg.text("style", {}, std::string(printStyle) + std::string(chartStyle) + std::string(symbolStyle()));
  svg.leaf("rect", {{"width", sheet::width}, {"height", height}, {"fill", "#fff"}});
}

}  // namespace

std::string chartSvg(const Chart& chart, std::size_t systemsPerRow) {
  const ChartLayout layout = layOut(chart, systemsPerRow);
  SvgWriter svg;
  openDrawing(svg, chart, layout.sheets);
  auto first = layout.panels.begin();
  do {
    const auto end =
        std::find_if(first, layout.panels.end(), [&](const ChartPanel& panel) { return panel.sheet != first->sheet; });
    drawSheet(svg, chart, layout, first, end);
    first = end;
  } while (first != layout.panels.end());
  svg.close();
  return svg.markup();
}

}  // namespace kiv
