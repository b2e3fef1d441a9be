#include "apps/kivsys/commands/analyze_command.h"

#include <optional>

#include "apps/kivsys/commands/run_outcome.h"
#include "apps/kivsys/commands/valid_pages.h"
#include "apps/kivsys/commands/warned_run.h"
#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/output/analysis_output.h"
#include "apps/kivsys/safety/input_files.h"
#include "apps/kivsys/selection/selection.h"
#include "platform/console/console_host.h"
#include "platform/console/error_line.h"
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
bool runAnalysis(ConsoleHost& console, KivSystem& program, const std::string& namesFile, bool allowZeroId,
                 GroupFacts& group) {
  if (namesFile.empty()) {
    deleteOldResults(console.system());
    return false;
  }
  return endsNormally(console, [&] { analyze(program, namesFile, allowZeroId, &group); });
}

std::optional<Layouts> layoutsOf(ConsoleHost& console, const SystemTable& systems, GroupFacts& group, Places places) {
  std::optional<Layouts> layouts;
  static_cast<void>(endsNormally(console, [&] { layouts = findLayouts(console.system(), systems, group, places); }));
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
  GroupFacts group = options.selection.likePanel ? GroupFacts({.instruments = true})
                                                 : GroupFacts({.instruments = true, .losses = LossScan::staves});
  const bool normalEnd =
      runAnalysis(console, program, pages ? pages->namesFile() : namesFile, options.allowZeroId, group);
  const bool details = options.json || options.jsonl;
  AnalysisOutput output{outcomeOf(program, console, normalEnd), {}, {}, {}, {}, pages ? &*pages : nullptr};
  if (output.outcome.normalEnd && !options.selection.likePanel) {
    output.warnings = showWarnings(program, group, {scopeOf(output.outcome), options.allowZeroId}, details);
  }
  if (output.outcome.normalEnd) {
    output.layouts =
        layoutsOf(console, program.systems, group, details ? Places::ofEverySystem : Places::ofFirstSystems);
  }
  if (output.layouts) {
    output.instruments = group.instruments();
  }
  if (details) {
    output.problems = problemsOf(console.system(), output.outcome);
  }
  const bool anySkipped = pages && pages->anySkipped();
  const int status = anySkipped ? exit_status::critical : exitStatusOf(output.outcome, isUnusable(output, options));
  if (options.jsonl) {
    return printOutcome(asJsonLines(output), status);
  }
  return printOutcome(options.json ? asJson(output) : asText(console.system(), output), status);
}

}  // namespace

int runAnalyze(const AnalyzeOptions& options) {
  ConsoleHost console(options.selection.likePanel ? Guard::off : Guard::on);
  if (options.json || options.jsonl) {
    console.user().hideProgress();
  }
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
