#pragma once

#include <string>

#include "apps/kivsys/commands/conversion_plan.h"
#include "apps/kivsys/commands/run_outcome.h"
#include "apps/kivsys/output/conversion_output.h"

namespace kiv {

/// The line that says, after a conversion that has written no results as none were needed, that this is so; "" when
/// there is nothing to say. What to do to have them is added to the output, unless something else is to be done first.
std::string addNoResultsStep(const ConsoleSystem& system, const ConvertOptions& options, ConvertOutput& output);

/// The line that says, after a dry run, what a run writes beside the results that the dry run lists; "" when it would
/// not have ended normally.
std::string dryRunNote(const ConvertOutput& output, const ConvertOptions& options, const ResultPlan& results);

}  // namespace kiv
