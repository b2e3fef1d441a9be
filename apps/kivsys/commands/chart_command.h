#pragma once

#include <cstddef>
#include <string>

#include "apps/kivsys/selection/selection.h"

namespace kiv {

/// What the user asked of a chart.
struct ChartOptions {
  Selection selection;
  std::string out;  ///< the drawing as it was typed; "-" is standard output, "" asks for text there
  bool allowZeroId = false;
  std::size_t systemsPerRow = 0;  ///< before the chart wraps; 0 for as many as fit
  bool keepGoing = false;         ///< skip pages that an analysis would end over
};

/// Analyzes the selected pages and shows which instruments their systems have. Returns the program's exit status.
int runChart(const ChartOptions& options);

}  // namespace kiv
