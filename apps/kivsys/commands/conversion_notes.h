#pragma once

#include <string>

#include "apps/kivsys/commands/conversion_plan.h"
#include "apps/kivsys/commands/run_outcome.h"
#include "apps/kivsys/output/conversion_output.h"

namespace kiv {

/// The lines that say, after a conversion that has written no results as none were needed, that this is so, and what to
/// do to have them; "" when there is nothing to say.
std::string noResultsNote(const ConsoleSystem& system, const RunOutcome& outcome, const ConvertOptions& options);

/// The line that says, after a dry run, what a run writes beside the results that the dry run lists; "" when it would
/// not have ended normally.
std::string dryRunNote(const ConvertOutput& output, const ConvertOptions& options, const ResultPlan& results);

}  // namespace kiv
