#pragma once

#include <optional>
#include <string>
#include <vector>

#include "apps/kivsys/output/suggestions_output.h"
#include "apps/kivsys/selection/selection.h"
#include "report_page/gather_report.h"

namespace kiv {

/// The arguments that select the same pages, each after a blank: a pattern for many pages that are all of their kind in
/// their folder, else what was typed.
std::string shortArguments(ConsoleSystem& system, const Selection& selection);

/// The rows of a table of corrections, as a report shows them, or what is wrong with the table, a line each.
struct TableProposals {
  std::vector<report::ReportProposal> proposals;
  std::vector<std::string> errors;
};

/// Reads the table, a full name. Without a name there are none.
TableProposals readProposals(ConsoleSystem& system, const std::string& file);

/// A file in a new folder for temporary files, which only the user can enter; "" when it cannot be made.
std::string temporaryReport(NativeSystem& system);

}  // namespace kiv
