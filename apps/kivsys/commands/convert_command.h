#pragma once

#include <string>

#include "apps/kivsys/selection/selection.h"

namespace kiv {

/// What the user asked of a conversion.
struct ConvertOptions {
  Selection selection;
  std::string result;  ///< the first result file as it was typed; "" puts the results beside the first page
  bool allowZeroId = false;
  bool noOverwrite = false;    ///< ask before a file is replaced
  bool noInstrNumber = false;  ///< results show no instrument identifiers
  bool force = false;          ///< convert input that qualifies as it is, too
  bool json = false;
  bool noUndo = false;     ///< write no journal
  bool dryRun = false;     ///< write nothing, print what would be written
  bool verify = false;     ///< prove the conversion afterwards
  bool strict = false;     ///< do not convert after a warning
  bool keepGoing = false;  ///< skip pages that an analysis would end over
  bool fit = false;        ///< make rest staves that fit the music
  unsigned jobs = 0;       ///< 1 writes each result before the next system is converted; 0 leaves it to the program
  bool trace = false;      ///< leave the tables of the last system in a text file
};

/// Analyzes the selected pages as the panel does, converts them when they need it, and prints the outcome. Returns the
/// program's exit status.
int runConvert(const ConvertOptions& typed);

}  // namespace kiv
