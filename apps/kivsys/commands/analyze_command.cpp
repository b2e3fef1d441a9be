#include "apps/kivsys/commands/analyze_command.h"

#include <optional>

#include "apps/kivsys/commands/run_outcome.h"
#include "apps/kivsys/commands/valid_pages.h"
#include "apps/kivsys/commands/warned_run.h"
#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/output/analysis_output.h"
#include "apps/kivsys/output/next_step.h"
#include "apps/kivsys/safety/input_files.h"
#include "apps/kivsys/selection/selection.h"
#include "platform/console/console_host.h"
#include "platform/console/error_line.h"
#include "platform/console/printable.h"
#include "shell/kivsystem.h"
#include "shell/start_up.h"

namespace kiv {
namespace {

int exitStatusOf(const RunOutcome& outcome, bool reportUnusable) {
  if (!outcome.normalEnd) {
    return exit_status::critical;
  }
  return reportUnusable ? exit_status::notUsable : exit_status::normal;
}

bool isUnusable(const AnalysisOutput& output, const AnalyzeOptions& options) {
  return (options.exitCode && !output.outcome.qualifies()) || (options.strict && !output.warnings.messages.empty());
}

RunScope scopeOf(const RunOutcome& outcome) {
  return outcome.qualifies() ? RunScope::analysis : RunScope::beforeConversion;
}

/// Runs the analysis, or only deletes old results when there is nothing to analyze.
bool runAnalysis(ConsoleHost& console, KivSystem& program, const std::string& namesFile, bool allowZeroId) {
  if (namesFile.empty()) {
    deleteOldResults(console.system());
    return false;
  }
  return endsNormally(console, [&] { analyze(program, namesFile, allowZeroId); });
}

std::optional<Layouts> layoutsOf(ConsoleHost& console, const SystemTable& systems, Places places) {
  std::optional<Layouts> layouts;
  static_cast<void>(endsNormally(console, [&] { layouts = findLayouts(console.system(), systems, places); }));
  if (!layouts) {
    printError("the layouts are not told, as the report cannot be read again");
  }
  return layouts;
}

int analyzeNames(ConsoleHost& console, const std::string& namesFile, const AnalyzeOptions& options) {
  KivSystem program(console.host());
  std::optional<ValidPages> pages;
  if (options.keepGoing) {
    pages.emplace(console, namesFile);
  }
  const bool normalEnd = runAnalysis(console, program, pages ? pages->namesFile() : namesFile, options.allowZeroId);
  const bool details = options.json || options.jsonl;
  AnalysisOutput output{outcomeOf(program, console, normalEnd), {}, {}, {}, {}, pages ? &*pages : nullptr};
  if (output.outcome.normalEnd && !options.selection.likePanel) {
    output.warnings = showWarnings(program, {scopeOf(output.outcome), options.allowZeroId}, details);
  }
  if (output.outcome.normalEnd) {
    output.layouts = layoutsOf(console, program.systems, details ? Places::ofEverySystem : Places::ofFirstSystems);
  }
  if (output.layouts) {
    output.instruments = findInstruments(console.system());
  }
  if (details) {
    output.problems = problemsOf(console.system(), output.outcome);
  }
  if (!options.selection.likePanel) {
    output.next = nextStep(output.outcome, options.selection);
  }
  const bool anySkipped = pages && pages->anySkipped();
  const int status = anySkipped ? exit_status::critical : exitStatusOf(output.outcome, isUnusable(output, options));
  if (options.jsonl) {
    return printOutcome(asJsonLines(output), status);
  }
  if (options.json) {
    return printOutcome(asJson(output), status);
  }
  const int printed = printOutcome(asText(console.system(), output), status);
  if (output.next) {
    NativeSystem::writeError("Next: " + printable(*output.next) + "\n");
  }
  return printed;
}

}  // namespace

int runAnalyze(const AnalyzeOptions& options) {
  ConsoleHost console(options.selection.likePanel ? Guard::off : Guard::on);
  const std::string folder = folderOfRun(console.system(), options.selection);
  const SelectionUse use{
      FolderUse::written, options.keepGoing,
      [&](const SelectedPages& pages) { return InputFiles(pages).refusals(analysisOutputs(console.system(), folder)); },
      [&](const SelectedPages&) { return std::vector<std::string>{console.system().diskName(folder)}; }};
  return runOnSelection(console, options.selection, use,
                        [&](const std::string& namesFile) { return analyzeNames(console, namesFile, options); });
}

int runSiblingCall(const std::string& commandLine) {
  ConsoleHost console(Guard::off);
  KivSystem program(console.host());
  const bool normalEnd = endsNormally(console, [&] {
    if (!isAnalysisMode(commandLine)) {
      refuseCall(program, commandLine);
    }
    Form_Load(program, commandLine);
  });
  const RunOutcome outcome = outcomeOf(program, console, normalEnd);
  return printOutcome(asText(outcome), exitStatusOf(outcome, false));
}

}  // namespace kiv
