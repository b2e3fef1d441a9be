#pragma once

#include <optional>
#include <string>

#include "apps/kivsys/commands/run_outcome.h"
#include "apps/kivsys/selection/selection.h"

namespace kiv {

/// The command line that helps after an analysis that has found wrong ids: suggestions for the same pages. Names are
/// quoted as the system's shell needs it. None when no command helps.
std::optional<std::string> nextStep(const RunOutcome& outcome, const Selection& selection);

}  // namespace kiv
