#pragma once

#include <string>

#include "apps/kivsys/selection/selection.h"

namespace kiv {

/// What the user asked of suggestions.
struct SuggestOptions {
  Selection selection;
  std::string out;     ///< the corrections as comma-separated values; "-" is standard output, "" for none
  bool force = false;  ///< replace a table with other corrections
  bool json = false;
  bool keepGoing = false;  ///< skip pages that an analysis would end over
};

/// Analyzes the selected pages and proposes ids for staves and cue markers whose ids are wrong. Writes no file but the
/// corrections. Returns the program's exit status.
int runSuggest(const SuggestOptions& options);

}  // namespace kiv
