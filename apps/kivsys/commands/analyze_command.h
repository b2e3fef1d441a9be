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
};

/// Runs the analysis and prints its outcome. Returns the program's exit status.
int runAnalyze(const AnalyzeOptions& options);

/// Runs what a sibling tool asks for by its command line. Returns the program's exit status.
int runSiblingCall(const std::string& commandLine);

}  // namespace kiv
