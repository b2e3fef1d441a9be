#pragma once

#include <string>

#include "apps/kivsys/commands/run_outcome.h"

namespace kiv {

/// The line that says what to do after a conversion that has written no results, as a command line; "" when there is
/// nothing to say. A conversion has planned results when a dry run would have written them.
std::string nextCommand(const RunOutcome& outcome, bool hasPlannedResults);

}  // namespace kiv
