#pragma once

#include <optional>
#include <string>

#include "apps/kivsys/commands/run_outcome.h"
#include "apps/kivsys/selection/selection.h"

namespace kiv {

/// The command line that helps after an analysis that has found wrong ids: suggestions for the same pages. Names are
/// quoted as the system's shell needs it. None when no command helps.
std::optional<std::string> nextStep(const RunOutcome& outcome, const Selection& selection);

/// The command line that reads the selected pages with the corrections of a table as well, as it was typed. None when
/// the pages or their corrections came from standard input, or the table went to standard output.
std::optional<std::string> nextWithCorrections(const std::string& command, const Selection& selection,
                                               const std::string& table);

}  // namespace kiv
