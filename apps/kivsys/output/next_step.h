#pragma once

#include <optional>
#include <string>

#include "apps/kivsys/commands/run_outcome.h"
#include "apps/kivsys/selection/selection.h"
#include "diagnostics/layouts.h"
#include "messages/console_words.h"

namespace kiv {

/// A name as an argument that the system's shell passes on unchanged; one that begins with a hyphen is no option then.
std::string asArgument(const std::string& name);
/// The arguments that select the same pages again, a blank before each.
std::string selectedArguments(const Selection& selection);

/// The command line that helps after an analysis with a page that is damaged. It has been printed with the message
/// about that page, if messages are printed. Names are quoted as the system's shell needs it.
std::optional<std::string> stepForPage(const RunOutcome& outcome, const FileNamer& nameOf);

/// The command line that helps after an analysis that has found wrong ids: suggestions for the same pages. None when
/// every cue that the analysis calls undefined refers to an instrument of its system after all.
std::optional<std::string> stepForGroup(const RunOutcome& outcome, const std::optional<Layouts>& layouts,
                                        const Selection& selection);

}  // namespace kiv
