#include <algorithm>
#include <array>
#include <cmath>

#include "drawing/chart_drawings.h"
#include "drawing/svg.h"

namespace kiv {
namespace {

// Millimeters of a sheet of A4, landscape.
constexpr double sheetWidth = 297;
constexpr double sheetHeight = 210;
constexpr double margin = 12;
constexpr double idWidth = 16;  // of the labels left of the cells, without names
constexpr double titleHeight = 12;
constexpr double legendHeight = 16;
constexpr double systemNumberHeight = 5;  // for the numbers above a row of systems
constexpr double digitWidth = 1.8;
constexpr double letterWidth = 2.3;
constexpr double nameLetterWidth = 1.8;  // on the average
constexpr std::size_t longestName = 16;
constexpr double rowGap = 4;
constexpr int largestCell = 56;  // in quarters of a millimeter
constexpr int smallestCell = 4;

constexpr std::string_view style = R"(
text { font-family: serif; fill: #222; font-size: 3.2px; }
.title { font-size: 5px; font-weight: bold; }
.instrument { text-anchor: end; }
.multifile { fill: #dbe7f5; }
.band { fill: #f2f2f2; }
.page { stroke: #222; stroke-width: 0.3; }
)";

struct CellSymbol {
  Presence presence;
  const char* name;
  const char* body;  ///< within a square of 10
};

// Each differs in its shape too, so that a print without color is readable.
constexpr std::array<CellSymbol, presenceKinds> symbols = {
    {{Presence::present, "present", "fill:#2b6f6a"},
     {Presence::missing, "missing", "fill:#fbe6b8;stroke:#c9a13b;stroke-width:0.6"},
     {Presence::duplicate, "duplicate", "fill:#c0392b"},
     {Presence::zeroId, "zero", "fill:#fff;stroke:#7d3c98;stroke-width:1.4"}}};

const CellSymbol& symbolOf(Presence presence) {
  return *std::find_if(symbols.begin(), symbols.end(), [&](const CellSymbol& s) { return s.presence == presence; });
}

void defineSymbols(SvgWriter& svg) {
  svg.open("defs");
  for (const CellSymbol& symbol : symbols) {
    svg.open("symbol", {{"id", symbol.name}, {"viewBox", "0 0 10 10"}});
    svg.leaf("rect", {{"x", 1.0}, {"y", 1.0}, {"width", 8.0}, {"height", 8.0}, {"style", symbol.body}});
    if (symbol.presence == Presence::missing) {
      svg.leaf("path",
               {{"d", "M2 4.2H8M3.2 4.2H6.8V6H3.2z"}, {"style", "fill:#7a5c10;stroke:#7a5c10;stroke-width:.4"}});
    } else if (symbol.presence == Presence::duplicate) {
      svg.leaf("path", {{"d", "M1 9L9 1M1 5L5 1M5 9L9 5"}, {"style", "stroke:#fff;stroke-width:1"}});
    } else if (symbol.presence == Presence::zeroId) {
      svg.leaf("circle", {{"cx", 5.0}, {"cy", 5.0}, {"r", 2.0}, {"style", "fill:none;stroke:#7d3c98"}});
    }
    svg.close();
  }
  svg.close();
}

/// A page name without its suffix; of a long one only the end, which has the number.
std::string shortName(const ChartPage& page) {
  std::string name = page.name.substr(0, page.name.find('.'));
  if (name.size() > longestName) {
    constexpr unsigned char continuation = 0x80;
    std::size_t cut = name.size() - longestName;
    while (cut < name.size() && (static_cast<unsigned char>(name[cut]) & 0xC0U) == continuation) {
      ++cut;
    }
    name = "..." + name.substr(cut);
  }
  return name;
}

/// How the systems are laid out in rows.
struct Grid {
  double cell = 0;
  double labelWidth = 0;  ///< left of the cells, for names and identifiers
  double headHeight = 0;  ///< above the cells of a row, for names and numbers
  std::size_t systemsPerRow = 1;
  std::size_t rows = 0;
  double rowHeight = 0;

  double height() const { return rowHeight * static_cast<double>(rows); }
};

Grid gridOf(const Chart& chart, double cell) {
  Grid grid;
  grid.cell = cell;
  grid.labelWidth = idWidth + nameLetterWidth * static_cast<double>(chart.nameColumns());
  grid.systemsPerRow = static_cast<std::size_t>((sheetWidth - 2 * margin - grid.labelWidth) / cell);
  grid.rows = (chart.systems.size() + grid.systemsPerRow - 1) / grid.systemsPerRow;
  std::size_t characters = 1;
  for (const ChartPage& page : chart.pages) {
    characters = std::max(characters, shortName(page).size());
  }
  grid.headHeight = systemNumberHeight + letterWidth * static_cast<double>(characters + 1);
  grid.rowHeight = grid.headHeight + cell * static_cast<double>(chart.instruments.size()) + rowGap;
  return grid;
}

/// The grid with the largest cells that fit on the sheet; with the smallest when none fit.
Grid fittingGrid(const Chart& chart) {
  constexpr double available = sheetHeight - 2 * margin - titleHeight - legendHeight;
  constexpr double quarter = 0.25;
  Grid grid = gridOf(chart, largestCell * quarter);
  for (int cell = largestCell; cell >= smallestCell && grid.height() > available; --cell) {
    grid = gridOf(chart, cell * quarter);
  }
  return grid;
}

/// The systems of one row of the grid.
struct GridRow {
  std::size_t first = 0;
  std::size_t end = 0;
  double top = 0;

  double x(std::size_t system, const Grid& grid) const {
    return margin + grid.labelWidth + grid.cell * static_cast<double>(system - first);
  }
  double cellTop(std::size_t instrument, const Grid& grid) const {
    return top + grid.headHeight + grid.cell * static_cast<double>(instrument);
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

void drawPageStart(SvgWriter& svg, const ChartPage& page, const Grid& grid, double x, const GridRow& row) {
  const double height = grid.rowHeight - rowGap;
  if (page.files > 1) {
    svg.leaf("rect", {{"class", "multifile"}, {"x", x}, {"y", row.top}, {"width", grid.cell}, {"height", height}});
  }
  svg.leaf("line", {{"class", "page"}, {"x1", x}, {"y1", row.top}, {"x2", x}, {"y2", row.top + height}});
}

void drawHeads(SvgWriter& svg, const Chart& chart, const Grid& grid, const GridRow& row) {
  constexpr double lineHeight = 3.4;
  constexpr double besideLine = 2.8;
  constexpr double aboveCells = 1.5;
  constexpr double inset = 0.6;
  LabelLine names;
  LabelLine numbers;
  for (std::size_t i = row.first; i < row.end; ++i) {
    const double x = row.x(i, grid);
    const double numberLine = row.top + grid.headHeight - aboveCells;
    if (i == row.first || chart.startsPage(i)) {
      const ChartPage& page = chart.pages[chart.systems[i].page];
      drawPageStart(svg, page, grid, x, row);
      if (names.reserve(x, lineHeight)) {
        const std::string position =
            svgNumber(x + besideLine) + " " + svgNumber(row.top + grid.headHeight - systemNumberHeight);
        svg.text("text", {{"class", "pagename"}, {"transform", "translate(" + position + ") rotate(-90)"}},
                 shortName(page));
      }
    }
    const std::string number = std::to_string(i + 1);
    if (numbers.reserve(x, digitWidth * static_cast<double>(number.size() + 1))) {
      svg.text("text", {{"class", "system"}, {"x", x + inset}, {"y", numberLine}}, number);
    }
  }
}

/// The name, if there is one, and the identifier.
std::string labelOf(const Chart& chart, std::int16_t instrument) {
  const auto name = chart.names.find(instrument);
  return (name == chart.names.end() ? "" : name->second.text + " ") + std::to_string(instrument);
}

void drawRow(SvgWriter& svg, const Chart& chart, const Grid& grid, const GridRow& row) {
  constexpr double beforeCells = 2;
  constexpr double baseline = 0.5;
  constexpr double halfCapital = 1.1;
  svg.open("g", {{"class", "row"}});
  drawHeads(svg, chart, grid, row);
  constexpr double lineHeight = 3.2;
  double free = 0;
  for (std::size_t k = 0; k < chart.instruments.size(); ++k) {
    const double y = row.cellTop(k, grid);
    if (y >= free) {
      svg.text("text",
               {{"class", "instrument"},
                {"x", margin + grid.labelWidth - beforeCells},
                {"y", y + grid.cell * baseline + halfCapital}},
               labelOf(chart, chart.instruments[k]));
      free = y + lineHeight;
    }
    for (std::size_t i = row.first; i < row.end; ++i) {
      const char* name = symbolOf(chart.systems[i].cells[k]).name;
      svg.leaf("use", {{"class", name},
                       {"href", "#" + std::string(name)},
                       {"x", row.x(i, grid)},
                       {"y", y},
                       {"width", grid.cell},
                       {"height", grid.cell}});
    }
  }
  svg.close();
}

void drawLegend(SvgWriter& svg, const Chart& chart, double y) {
  constexpr double symbolSize = 5;
  constexpr double entry = 58;
  constexpr double textOffset = 7;
  constexpr double baseline = 3.6;
  svg.open("g", {{"class", "legend"}});
  double x = margin;
  for (const CellSymbol& cell : symbols) {
    svg.leaf(
        "use",
        {{"href", "#" + std::string(cell.name)}, {"x", x}, {"y", y}, {"width", symbolSize}, {"height", symbolSize}});
    svg.text("text", {{"x", x + textOffset}, {"y", y + baseline}}, meaningOf(cell.presence));
    x += entry;
  }
  svg.leaf("rect", {{"class", "multifile"}, {"x", x}, {"y", y}, {"width", symbolSize}, {"height", symbolSize}});
  svg.text("text", {{"x", x + textOffset}, {"y", y + baseline}}, "page of several files");
  if (const std::string outOfOrder = chart.outOfOrder(); !outOfOrder.empty()) {
    constexpr double nextLine = 6;
    svg.text("text", {{"class", "order"}, {"x", margin}, {"y", y + nextLine + baseline}},
             "Staves in another order than in a result: system " + outOfOrder);
  }
  svg.close();
}

}  // namespace

std::string chartSvg(const Chart& chart) {
  const Grid grid = fittingGrid(chart);
  const double height = std::max(sheetHeight, 2 * margin + titleHeight + grid.height() + legendHeight);
  SvgWriter svg;
  svg.open("svg", {{"xmlns", "http://www.w3.org/2000/svg"},
                   {"width", svgNumber(sheetWidth) + "mm"},
                   {"height", svgNumber(height) + "mm"},
                   {"viewBox", "0 0 " + svgNumber(sheetWidth) + " " + svgNumber(height)}});
  svg.text("title", {}, "Systems by instruments");
  svg.text("style", {}, style);
  defineSymbols(svg);
  svg.leaf("rect", {{"width", sheetWidth}, {"height", height}, {"fill", "#fff"}});
  constexpr double titleBaseline = 5;
  svg.text("text", {{"class", "title"}, {"x", margin}, {"y", margin + titleBaseline}}, chart.summary());
  GridRow row;
  row.top = margin + titleHeight;
  for (; row.first < chart.systems.size(); row.first = row.end) {
    row.end = std::min(row.first + grid.systemsPerRow, chart.systems.size());
    drawRow(svg, chart, grid, row);
    row.top += grid.rowHeight;
  }
  drawLegend(svg, chart, row.top);
  svg.close();
  return svg.markup();
}

}  // namespace kiv
