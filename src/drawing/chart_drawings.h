#pragma once

#include <cstddef>
#include <string>

#include "drawing/chart.h"

namespace kiv {

/// How a chart is shown as text.
struct TextStyle {
  std::size_t width = 80;         ///< of a line, in characters
  bool color = false;             ///< with the escape sequences of a terminal
  std::size_t systemsPerRow = 0;  ///< however wide the lines become; 0 is as many as fit
};

/// The chart as text, in blocks of as many systems as fit on a line. Lines end with LF.
std::string chartText(const Chart& chart, const TextStyle& style);

/// The chart as a drawing (SVG) that needs nothing but itself: sheets of A4, landscape, below each other, which a
/// browser prints one by one. A group that fits on one sheet gets cells as large as the sheet allows. Rows have the
/// number of systems given, or as many as fit; 0 is as many as fit.
std::string chartSvg(const Chart& chart, std::size_t systemsPerRow = 0);

}  // namespace kiv
