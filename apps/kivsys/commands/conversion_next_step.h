#pragma once

#include "apps/kivsys/commands/convert_command.h"
#include "apps/kivsys/output/conversion_output.h"
#include "apps/kivsys/selection/selection.h"
#include "diagnostics/group_facts.h"
#include "platform/console/console_host.h"
#include "shell/kivsystem.h"

namespace kiv {

/// The analysis that a conversion began with.
struct AnalysisOfConversion {
  const RunOutcome& outcome;
  const Selection& selection;
};

/// An output with the names for people, and with the command line that helps after the analysis, which has filled the
/// program's tables and was observed by the facts; none when nothing is wrong with ids or pages, or like the panel.
ConvertOutput outputWithNext(ConsoleHost& console, KivSystem& program, GroupFacts& group,
                             const AnalysisOfConversion& analysis);

/// Whether --fit can be added to a run: --layout and --like-panel exclude it.
bool canFit(const ConvertOptions& options);

/// Adds the same command with --fit to the output of a conversion that ended because of rest staves. With --strict that
/// is a run which would be accepted with --fit, as the caller knows. To others nothing is added.
void addFittingStep(const ConsoleSystem& system, const ConvertOptions& options, bool isAccepted, ConvertOutput& output);

/// Prints the outcome, and for people that command line. Returns the program's exit status.
int printWithNext(ConsoleHost& console, const ConvertOutput& output, bool json);

}  // namespace kiv
