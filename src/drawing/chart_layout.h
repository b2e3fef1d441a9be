#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "drawing/chart.h"

namespace kiv {

/// Lengths of a chart's sheets, in millimeters.
namespace sheet {
constexpr double width = 297;  ///< A4, landscape
constexpr double height = 210;
constexpr double margin = 12;
constexpr double titleHeight = 12;
constexpr double legendHeight = 16;
constexpr double fontSize = 3;
constexpr double idWidth = 16;            ///< of the labels left of the cells, without names
constexpr double longestName = 48;        ///< of an instrument
constexpr double longestPageName = 40;    ///< of a page, above its cells
constexpr double systemNumberHeight = 5;  ///< for the numbers above the cells
constexpr double rowGap = 4;
}  // namespace sheet

/// Some neighboring systems with some neighboring instruments, drawn together.
struct ChartPanel {
  std::size_t sheet = 0;
  double top = 0;  ///< on the sheet, of the names above the cells
  std::size_t firstSystem = 0;
  std::size_t endSystem = 0;
  std::size_t firstInstrument = 0;
  std::size_t endInstrument = 0;
};

/// Where a chart is drawn: on as few sheets as its cells need, which are never too small to be read.
struct ChartLayout {
  double cell = 0;        ///< width and height of a cell
  double labelWidth = 0;  ///< left of the cells, for names and identifiers
  double headHeight = 0;  ///< above the cells of a panel, for names and numbers
  std::size_t sheets = 1;
  std::vector<ChartPanel> panels;  ///< in the order in which they are drawn

  double left() const { return sheet::margin + labelWidth; }
  /// Where the panel's cells begin, and where they end.
  double cellsTop(const ChartPanel& panel) const { return panel.top + headHeight; }
  double bottom(const ChartPanel& panel) const {
    return cellsTop(panel) + cell * static_cast<double>(panel.endInstrument - panel.firstInstrument);
  }
};

/// The layout with the largest cells that fit on one sheet, or else with small ones on several. A row has this number
/// of systems, or as many as fit; 0 is as many as fit.
ChartLayout layOut(const Chart& chart, std::size_t systemsPerRow);

/// A page's name without its suffix, in front of the number cut to fit above its cells.
std::string headOf(const ChartPage& page);
/// What a page's or instrument's name is without a cut.
std::string fullHeadOf(const ChartPage& page);
std::string fullNameOf(const ChartName& name);

}  // namespace kiv
