#pragma once

#include <string>

#include "apps/kivsys/selection/selection.h"

namespace kiv {

/// What was asked of `kivsys report`, as it was typed.
struct ReportOptions {
  Selection selection;
  std::string out;          ///< the page to write; "-" is standard output, "" the folder for temporary files
  std::string result;       ///< the first result of a conversion; "" for none
  std::string corrections;  ///< a table of corrections to be shown instead of suggestions; "" for none
  bool allowZeroId = false;
  bool all = false;     ///< pictures of all systems
  bool open = false;    ///< open the page in the browser
  bool strict = false;  ///< status 3 when there is a problem or a warning
};

/// Analyzes the selected pages in memory, and writes one HTML page about them. Returns the program's exit status.
int runReport(const ReportOptions& typed);

}  // namespace kiv
