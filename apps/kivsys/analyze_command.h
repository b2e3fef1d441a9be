#pragma once

#include <string>
#include <vector>

namespace kiv {

/// What the user asked of an analysis, names as they were typed.
struct AnalyzeOptions {
  std::string folder;              ///< the run's current folder; "" is the one the program was started in
  std::string names;               ///< the names file; "" when pages are given
  std::vector<std::string> pages;  ///< the page files; empty when a names file is given
  bool allowZeroId = false;
  bool json = false;
  bool exitCode = false;
};

/// Runs the analysis and prints its outcome. Returns the program's exit status.
int runAnalyze(const AnalyzeOptions& options);

/// Runs what a sibling tool asks for by its command line. Returns the program's exit status.
int runSiblingCall(const std::string& commandLine);

}  // namespace kiv
