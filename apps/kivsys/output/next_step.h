#pragma once

#include <optional>
#include <string>

#include "apps/kivsys/commands/run_outcome.h"
#include "apps/kivsys/selection/selection.h"

namespace kiv {

/// The command line that helps after an analysis that has found wrong ids: suggestions for the same pages. Names are
/// quoted as the system's shell needs it. None when no command helps.
std::optional<std::string> nextStep(const RunOutcome& outcome, const Selection& selection);

/// The pages of a selection as arguments of a command line, each after a blank. Names are quoted.
std::string selectionArguments(const Selection& selection);

/// The argument as a shell passes it on unchanged.
std::string quotedForShell(const std::string& argument);

/// A file name as one argument of a command line.
std::string asArgument(const std::string& name);

}  // namespace kiv
