#include "apps/kivsys/analyze_command.h"

#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/run_outcome.h"
#include "apps/kivsys/selection.h"
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

int analyzeNames(ConsoleHost& host, const std::string& namesFile, const AnalyzeOptions& options) {
  KivSystem program(host);
  const bool normalEnd = runAnalysis(program, namesFile, options.allowZeroId);
  const RunOutcome outcome = outcomeOf(program, host, normalEnd);
  return printOutcome(options.json ? asJson(outcome) : asText(outcome), exitStatusOf(outcome, options.exitCode));
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
