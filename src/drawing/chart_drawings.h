#pragma once

#include <cstddef>
#include <string>

#include "drawing/chart.h"

namespace kiv {

/// How a chart is shown as text.
struct TextStyle {
  std::size_t width = 80;  ///< of a line, in characters
  bool color = false;      ///< with the escape sequences of a terminal
};

/// The chart as text, in blocks of as many systems as fit on a line. Lines end with LF.
std::string chartText(const Chart& chart, const TextStyle& style);

/// The chart as a drawing (SVG) that needs nothing but itself, on a sheet of A4, landscape: in rows of systems, with
/// cells as large as the sheet allows. A group that is too large for that gets a longer sheet.
std::string chartSvg(const Chart& chart);

}  // namespace kiv
