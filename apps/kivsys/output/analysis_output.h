#pragma once

#include <optional>
#include <string>
#include <vector>

#include "apps/kivsys/commands/keep_going.h"
#include "apps/kivsys/commands/run_outcome.h"
#include "diagnostics/layouts.h"
#include "diagnostics/problems.h"

namespace kiv {

/// All that an analysis tells.
struct AnalysisOutput {
  RunOutcome outcome;
  std::vector<Problem> problems;
  std::optional<Layouts> layouts;      ///< none when the run did not get so far
  const PagesToGoOn* pages = nullptr;  ///< of a run that leaves bad pages out; else null
};

/// The verdict, the counts and the layouts; last, which pages were left out.
std::string asText(const AnalysisOutput& output);
/// One JSON object on a line of its own.
std::string asJson(const AnalysisOutput& output);
/// A JSON object a line: the problems, the layouts and their deviations, the outcome.
std::string asJsonLines(const AnalysisOutput& output);

}  // namespace kiv
