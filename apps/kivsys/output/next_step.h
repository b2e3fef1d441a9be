#pragma once

#include <optional>
#include <string>

#include "apps/kivsys/commands/run_outcome.h"
#include "apps/kivsys/output/outcome_json.h"
#include "apps/kivsys/selection/selection.h"
#include "diagnostics/layouts.h"
#include "messages/console_words.h"

namespace kiv {

/// The command line that helps after an analysis with a page that is damaged. It has been printed with the message
/// about that page, if messages are printed. Names are quoted as the system's shell needs it.
std::optional<std::string> stepForPage(const std::vector<ShownMessage>& messages, ConsoleSystem& system);
std::optional<std::string> stepForPage(const RunOutcome& outcome, ConsoleSystem& system);

/// A command line as JSON has it: null for none.
Json nextJson(const std::optional<std::string>& next);

/// The command line that helps after an analysis that has found wrong ids: suggestions for the same pages. None when
/// every cue that the analysis calls undefined refers to an instrument of its system after all.
std::optional<std::string> stepForGroup(const RunOutcome& outcome, const std::optional<Layouts>& layouts,
                                        const Selection& selection);
/// Whether that step depends on the layouts.
bool needsLayouts(const RunOutcome& outcome);

/// The command line that reads the selected pages with the corrections of a table as well, as it was typed. None when
/// the pages or their corrections came from standard input, or the table went to standard output.
std::optional<std::string> nextWithCorrections(const std::string& command, const Selection& selection,
                                               const std::string& table);

/// A first result in a folder that is not there yet, as the option of a command line, after a blank.
std::string newResultArgument(const ConsoleSystem& system);

/// Whether another run can read the same: what came from standard input cannot be read twice.
bool canRepeat(const Selection& selection);

/// The pages of a selection, with their order, as arguments of a command line, each after a blank. Names are quoted.
std::string selectionArguments(const Selection& selection);

}  // namespace kiv
