#include "drawing/chart_panel.h"

#include <array>
#include <vector>

#include "drawing/chart_symbols.h"
#include "drawing/text_width.h"

namespace kiv {
namespace {

/// A panel, and where its cells are.
struct PanelGrid {
  const ChartLayout& layout;
  const ChartPanel& panel;

  double x(std::size_t system) const {
    return layout.left() + layout.cell * static_cast<double>(system - panel.firstSystem);
  }
  double y(std::size_t instrument) const {
    return layout.cellsTop(panel) + layout.cell * static_cast<double>(instrument - panel.firstInstrument);
  }
};

/// Keeps labels on one line from overlapping. They come from left to right.
class LabelLine {
 public:
  /// Reserves the width at x; false when the label before it reaches that far.
  bool reserve(double x, double width) {
    if (x < free_) {
      return false;
    }
    free_ = x + width;
    return true;
  }

 private:
  double free_ = 0;
};

/// A text whose full form, when it was cut, a browser shows beside the mouse.
void drawLabel(SvgWriter& svg, SvgAttributes attributes, const std::string& text, const std::string& full) {
  if (text == full) {
    svg.text("text", attributes, text);
    return;
  }
  svg.open("g");
  svg.text("title", {}, full);
  svg.text("text", attributes, text);
  svg.close();
}

void drawPageName(SvgWriter& svg, const ChartPage& page, const PanelGrid& grid, double x) {
  constexpr double aboveNumbers = 0.5;
  const double y = grid.layout.cellsTop(grid.panel) - sheet::systemNumberHeight - aboveNumbers;
  const std::string position = svgNumber(x) + " " + svgNumber(y);
  drawLabel(svg, {{"class", "pagename"}, {"transform", "translate(" + position + ") rotate(-90)"}}, headOf(page),
            fullHeadOf(page));
}

/// The line where a page starts, its name, and the tint of a page of several files.
void drawPage(SvgWriter& svg, const ChartPage& page, const PanelGrid& grid, std::size_t system, bool hasName) {
  constexpr double besideLine = 2.6;
  constexpr double aboveCells = 0.8;
  const double x = grid.x(system);
  const double top = grid.panel.top;
  const double bottom = grid.layout.bottom(grid.panel);
  if (page.files > 1) {
    svg.leaf("rect",
             {{"class", "multifile"}, {"x", x}, {"y", top}, {"width", grid.layout.cell}, {"height", bottom - top}});
  }
  // Not across the numbers of systems, which may be wider than a cell.
  const double cells = grid.layout.cellsTop(grid.panel);
  svg.leaf("path",
           {{"class", "page"},
            {"d", "M" + svgNumber(x) + " " + svgNumber(top) + "V" + svgNumber(cells - sheet::systemNumberHeight) + "M" +
                      svgNumber(x) + " " + svgNumber(cells - aboveCells) + "V" + svgNumber(bottom)}});
  if (hasName) {
    drawPageName(svg, page, grid, x + besideLine);
  }
}

/// How far apart the numbers of systems are that are shown: one, or a number that is counted on easily.
std::size_t numberStep(const ChartLayout& layout, double width) {
  for (const std::size_t step : {1U, 2U, 5U}) {
    if (layout.cell * static_cast<double>(step) >= width) {
      return step;
    }
  }
  return 10;
}

void drawHeads(SvgWriter& svg, const Chart& chart, const PanelGrid& grid) {
  constexpr double lineHeight = 3.2;
  constexpr double digitWidth = 2;
  constexpr double aboveCells = 1.5;
  constexpr double inset = 0.6;
  const ChartPanel& panel = grid.panel;
  const double numberWidth = digitWidth * static_cast<double>(std::to_string(panel.endSystem).size()) + 2 * inset;
  const std::size_t step = numberStep(grid.layout, numberWidth);
  LabelLine names;
  LabelLine numbers;
  for (std::size_t i = panel.firstSystem; i < panel.endSystem; ++i) {
    if (i == panel.firstSystem || chart.startsPage(i)) {
      drawPage(svg, chart.pages[chart.systems[i].page], grid, i, names.reserve(grid.x(i), lineHeight));
    }
    const std::string number = std::to_string(i + 1);
    if ((i == panel.firstSystem || (i + 1) % step == 0) && numbers.reserve(grid.x(i), numberWidth)) {
      svg.text("text", {{"class", "system"}, {"x", grid.x(i) + inset}, {"y", grid.layout.cellsTop(panel) - aboveCells}},
               number);
    }
  }
}

/// The name, if there is one, and the identifier.
void drawInstrumentLabel(SvgWriter& svg, const Chart& chart, const PanelGrid& grid, std::size_t instrument) {
  constexpr double beforeCells = 2;
  constexpr double middle = 0.5;
  constexpr double halfCapital = 1.1;
  const std::int16_t id = chart.instruments[instrument];
  const auto name = chart.names.find(id);
  const std::string full = name == chart.names.end() ? "" : fullNameOf(name->second);
  const std::string before = full.empty() ? "" : " ";
  drawLabel(svg,
            {{"class", "instrument"},
             {"x", grid.layout.left() - beforeCells},
             {"y", grid.y(instrument) + grid.layout.cell * middle + halfCapital}},
            cutAtEnd(full, sheet::longestName / sheet::fontSize) + before + std::to_string(id),
            full + before + std::to_string(id));
}

/// The cells of an instrument.
void drawCells(SvgWriter& svg, const Chart& chart, const PanelGrid& grid, std::size_t instrument) {
  std::array<std::vector<CellCorner>, cellSymbols> squares;
  const auto squaresOf = [&](CellSymbol symbol) -> auto& {
    return squares[static_cast<std::size_t>(symbol)];
  };
  for (std::size_t i = grid.panel.firstSystem; i < grid.panel.endSystem; ++i) {
    const ChartSystem& system = chart.systems[i];
    const CellCorner corner{grid.x(i), grid.y(instrument)};
    squaresOf(symbolOf(system.cells[instrument])).push_back(corner);
    if (system.isMoved(instrument)) {
      squaresOf(CellSymbol::moved).push_back(corner);
    }
  }
  for (std::size_t symbol = 0; symbol < cellSymbols; ++symbol) {
    drawSymbols(svg, static_cast<CellSymbol>(symbol), squares[symbol], grid.layout.cell);
  }
}

}  // namespace

void drawPanel(SvgWriter& svg, const Chart& chart, const ChartLayout& layout, const ChartPanel& panel) {
  const PanelGrid grid{layout, panel};
  svg.open("g", {{"class", "row"}});
  drawHeads(svg, chart, grid);
  for (std::size_t k = panel.firstInstrument; k < panel.endInstrument; ++k) {
    drawInstrumentLabel(svg, chart, grid, k);
    drawCells(svg, chart, grid, k);
  }
  svg.close();
}

}  // namespace kiv
