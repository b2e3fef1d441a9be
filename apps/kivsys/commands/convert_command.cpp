#include "apps/kivsys/commands/convert_command.h"

#include <iostream>

#include <nlohmann/json.hpp>

#include "apps/kivsys/commands/dry_run.h"
#include "apps/kivsys/commands/run_outcome.h"
#include "apps/kivsys/commands/run_problems.h"
#include "apps/kivsys/commands/verify_command.h"
#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/output/diagnostics_json.h"
#include "conversion/dump_memory.h"
#include "platform/console/console_host.h"
#include "shell/cmd_convert.h"
#include "shell/cmd_run.h"
#include "shell/kivsystem.h"
#include "shell/start_up.h"

namespace kiv {
namespace {

/// Runs a press on a button. Returns false when it ended in a critical message.
bool press(void (*button)(KivSystem&), KivSystem& program) {
  try {
    button(program);
    return true;
  } catch (const ProgramEnd& end) {
    return end.exitCode == exit_status::normal;
  }
}

/// The tables as they are left. Returns false when they cannot be written.
bool dump(KivSystem& program) {
  try {
    dumpMemory(program.host, program.musFileName, program.items, program.order);
    return true;
  } catch (const ProgramEnd&) {
    std::cerr << "kivsys: cannot write " << dumpFile << '\n';
    return false;
  }
}

bool convert(KivSystem& program, const ConvertOptions& options, const std::string& firstResultFile) {
  if (!firstResultFile.empty()) {
    program.panel.txtFirstResultFile.text = firstResultFile;
  }
  return press(cmdConvert_Click, program) && (!options.trace || dump(program));
}

/// What the run leaves to be printed, and whether it ended well.
struct Conversion {
  RunOutcome outcome;
  std::vector<Problem> problems;
  KeptHost* kept = nullptr;  ///< holds what a dry run did not write; null otherwise
};

std::string jsonOfRun(const Conversion& run) {
  Json object = jsonOf(run.outcome);
  if (run.kept != nullptr) {
    object["dry_run"] = true;
    object["planned"] = plannedJson(plannedResults(*run.kept));
  }
  object["problems"] = jsonOf(run.problems);
  object["schema_version"] = schemaVersion;
  return asLine(object);
}

std::string textOfRun(const Conversion& run) {
  const RunOutcome& outcome = run.outcome;
  const std::string results = run.kept != nullptr ? plannedLines(plannedResults(*run.kept)) : createdLines(outcome);
  return asText(outcome) + results + (outcome.verification ? asText(*outcome.verification) : "");
}

int print(const Conversion& run, bool json) {
  const RunOutcome& outcome = run.outcome;
  const bool proved = !outcome.verification || outcome.verification->proved();
  return printOutcome(json ? jsonOfRun(run) : textOfRun(run),
                      outcome.normalEnd && proved ? exit_status::normal : exit_status::critical);
}

/// Converts on the console's host, or on one that keeps all writes.
int convertNames(ConsoleHost& console, KeptHost* kept, const std::string& namesFile, const std::string& firstResultFile,
                 const ConvertOptions& options) {
  KivSystem program(kept != nullptr ? static_cast<Host&>(*kept) : console);
  FindingsLog findings;
  program.observer = &findings;
  prepareForPanel(program);
  program.settings.namesFile = namesFile;
  program.settings.allowZeroInstrId = options.allowZeroId;
  program.panel.chkOverwrite.checked = !options.noOverwrite;
  program.panel.chkShowInstrNumber.checked = !options.noInstrNumber;
  bool converted = false;
  bool normalEnd = press(cmdRun_Click, program) && program.names.nameCount > 0;
  const RunOutcome analysis = outcomeOf(program, console, normalEnd);
  if (normalEnd && (program.panel.cmdConvert.enabled || options.force)) {
    normalEnd = convert(program, options, firstResultFile);
    converted = normalEnd;
  }
  RunOutcome outcome = withPagesWritten(analysis, console, normalEnd);
  outcome.verifies = options.verify;
  if (options.verify && converted) {
    outcome.verification = verificationOf(
        console, namesFile, {program.panel.txtFirstResultFile.text, program.panel.chkShowInstrNumber.checked});
  }
  Conversion run{outcome, {}, kept};
  if (options.json) {
    run.problems = problemsOf(program, findings, console);
  }
  return print(run, options.json);
}

}  // namespace

int runConvert(const ConvertOptions& options) {
  ConsoleHost host;
  const std::string firstResultFile = options.result.empty() ? "" : host.fullName(options.result);
  return runOnSelection(host, options.selection, [&](const std::string& namesFile) {
    DryRunHost kept(host);
    return convertNames(host, options.dryRun ? &kept : nullptr, namesFile, firstResultFile, options);
  });
}

}  // namespace kiv
