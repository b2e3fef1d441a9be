#pragma once

#include <optional>
#include <string>
#include <vector>

#include "apps/kivsys/commands/run_outcome.h"
#include "apps/kivsys/commands/valid_pages.h"
#include "apps/kivsys/output/print_outcome.h"
#include "apps/kivsys/output/warnings_output.h"
#include "diagnostics/instruments.h"
#include "diagnostics/layouts.h"
#include "diagnostics/problems.h"

namespace kiv {

/// All that an analysis prints.
struct AnalysisOutput {
  RunOutcome outcome;
  std::vector<Problem> problems;
  Warnings warnings;
  std::optional<Layouts> layouts;        ///< none when the run did not get so far
  std::vector<Instrument> instruments;   ///< those of the layouts
  const ValidPages* pages = nullptr;     ///< of a run that skips bad pages; else null
  std::optional<std::string> next = {};  ///< the command line that helps with the problems, if one does
  std::string usability = {};            ///< whether the pages can be used, for people
};

/// The line about the pages of a run that skips bad ones; "" without them, and for an end that leaves it unsaid.
std::string summaryOf(const ValidPages* pages, bool normalEnd);

/// The verdict, the counts and the layouts; last, the pages that were skipped.
std::string asText(Machine& machine, const AnalysisOutput& output);
/// One JSON object on a line of its own.
void addJson(OutputText& text, const AnalysisOutput& output);
/// A JSON object a line: the problems, the layouts and their deviations, the instruments, the outcome.
void addJsonLines(OutputText& text, const AnalysisOutput& output);

}  // namespace kiv
