#include "apps/kivsys/commands/analyze_command.h"

#include <optional>

#include "apps/kivsys/commands/keep_going.h"
#include "apps/kivsys/commands/run_outcome.h"
#include "apps/kivsys/commands/run_problems.h"
#include "apps/kivsys/commands/selection.h"
#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/output/analysis_output.h"
#include "platform/console/console_host.h"
#include "shell/kivsystem.h"
#include "shell/start_up.h"

namespace kiv {
namespace {

bool runAnalysis(KivSystem& program, const std::string& namesFile, bool allowZeroId) {
  try {
    analyse(program, namesFile, allowZeroId);
    return true;
  } catch (const ProgramEnd& end) {
    return end.exitCode == exit_status::normal;
  }
}

int exitStatusOf(const RunOutcome& outcome, bool tellsQualification) {
  if (!outcome.normalEnd) {
    return exit_status::critical;
  }
  return tellsQualification && !outcome.qualifies() ? exit_status::notQualified : exit_status::normal;
}

/// Runs the analysis, or only leaves no old results when there is nothing to run it on.
bool runOnNames(KivSystem& program, const std::string& namesFile, const AnalyzeOptions& options) {
  if (namesFile.empty()) {
    deleteOldResults(program.host);
    return false;
  }
  return runAnalysis(program, namesFile, options.allowZeroId);
}

int analyzeNames(ConsoleHost& host, const std::string& namesFile, const AnalyzeOptions& options) {
  KivSystem program(host);
  FindingsLog findings;
  program.observer = &findings;
  std::optional<PagesToGoOn> pages;
  if (options.keepGoing) {
    pages.emplace(host, namesFile);
  }
  const bool normalEnd = runOnNames(program, pages ? pages->namesFile() : namesFile, options);
  AnalysisOutput output{outcomeOf(program, host, normalEnd), {}, {}, pages ? &*pages : nullptr};
  if (output.outcome.normalEnd) {
    output.layouts = findLayouts(host, program.systems,
                                 options.json || options.jsonl ? Places::ofEverySystem : Places::ofFirstSystems);
    if (!output.layouts) {
      ConsoleHost::writeError("kivsys: the layouts are not told, as the report cannot be read again\n");
    }
  }
  if (options.json || options.jsonl) {
    output.problems =
        problemsOf(program, findings, host, pages ? pages->filesOfMessages() : std::vector<std::string>());
  }
  const bool anySkipped = pages && pages->anySkipped();
  const int status = anySkipped ? exit_status::critical : exitStatusOf(output.outcome, options.exitCode);
  if (options.jsonl) {
    return printOutcome(asJsonLines(output), status);
  }
  return printOutcome(options.json ? asJson(output) : asText(output), status);
}

}  // namespace

int runAnalyze(const AnalyzeOptions& options) {
  ConsoleHost host;
  return runOnSelection(host, options.selection,
                        [&](const std::string& namesFile) { return analyzeNames(host, namesFile, options); });
}

int runSiblingCall(const std::string& commandLine) {
  ConsoleHost host;
  KivSystem program(host);
  bool normalEnd = false;
  try {
    if (!isAnalysisMode(commandLine)) {
      refuseCall(program, commandLine);
    }
    Form_Load(program, commandLine);
  } catch (const ProgramEnd& end) {
    normalEnd = end.exitCode == exit_status::normal;
  }
  const RunOutcome outcome = outcomeOf(program, host, normalEnd);
  return printOutcome(asText(outcome), exitStatusOf(outcome, false));
}

}  // namespace kiv
