#include "apps/kivsys/commands/sort_command.h"

#include "apps/kivsys/commands/run_outcome.h"
#include "apps/kivsys/exit_status.h"
#include "platform/console/console_host.h"
#include "shell/kivsystem.h"
#include "sort/sort_on_instrument.h"

namespace kiv {
namespace {

int sortNames(ConsoleHost& host, const std::string& namesFile, const SortOptions& options) {
  KivSystem program(host);
  bool normalEnd = true;
  try {
    cmdSortInstrument_Click(host, namesFile, program.names, program.musFileName, program.items);
  } catch (const ProgramEnd& end) {
    normalEnd = end.exitCode == exit_status::normal;
  }
  const RunOutcome outcome = writingOutcomeOf(program.names, host, normalEnd);
  return printOutcome(options.json ? asJson(outcome) : createdLines(outcome),
                      normalEnd ? exit_status::normal : exit_status::critical);
}

}  // namespace

int runSort(const SortOptions& options) {
  ConsoleHost host;
  return runOnSelection(host, options.selection,
                        [&](const std::string& namesFile) { return sortNames(host, namesFile, options); });
}

}  // namespace kiv
