#pragma once

#include <string>

#include "apps/kivsys/selection/selection.h"

namespace kiv {

/// What the user asked of an analysis.
struct AnalyzeOptions {
  Selection selection;
  bool allowZeroId = false;
  bool json = false;
  bool jsonl = false;
  bool exitCode = false;
  bool keepGoing = false;  ///< skip bad pages
  bool strict = false;     ///< end with status 3 after a warning
  unsigned jobs = 0;       ///< 1 reads each page when its turn comes; 0 leaves it to the program
};

/// Runs the analysis and prints its outcome. Returns the program's exit status.
int runAnalyze(const AnalyzeOptions& options);

/// Runs what a sibling tool asks for by its command line. Returns the program's exit status.
int runSiblingCall(const std::string& commandLine);

}  // namespace kiv
