#pragma once

#include "drawing/chart_layout.h"
#include "drawing/svg.h"

namespace kiv {

/// Draws the panel on its sheet: names of the pages, numbers of the systems, names of the instruments, and the cells.
void drawPanel(SvgWriter& svg, const Chart& chart, const ChartLayout& layout, const ChartPanel& panel);

}  // namespace kiv
