#include "apps/kivsys/convert_command.h"

#include <iostream>

#include <nlohmann/json.hpp>

#include "apps/kivsys/dry_run.h"
#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/insight_json.h"
#include "apps/kivsys/run_outcome.h"
#include "apps/kivsys/run_problems.h"
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

std::string jsonOfRun(const RunOutcome& outcome, const std::vector<Problem>& problems, KeptHost* kept) {
  Json object = jsonOf(outcome);
  if (kept != nullptr) {
    object["dry_run"] = true;
    object["planned"] = plannedJson(plannedResults(*kept));
  }
  object["problems"] = jsonOf(problems);
  object["schema_version"] = schemaVersion;
  return asLine(object);
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
  bool normalEnd = press(cmdRun_Click, program) && program.names.nameCount > 0;
  const RunOutcome analysis = outcomeOf(program, console, normalEnd);
  normalEnd = analysis.normalEnd;
  if (normalEnd && (program.panel.cmdConvert.enabled || options.force)) {
    normalEnd = convert(program, options, firstResultFile);
  }
  const RunOutcome outcome = withPagesWritten(analysis, console, normalEnd);
  const int status = normalEnd ? exit_status::normal : exit_status::critical;
  if (options.json) {
    return printOutcome(jsonOfRun(outcome, problemsOf(program, findings, console), kept), status);
  }
  const std::string results = kept != nullptr ? plannedLines(plannedResults(*kept)) : createdLines(outcome);
  return printOutcome(asText(outcome) + results, status);
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
