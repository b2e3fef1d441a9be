#include "apps/kivsys/commands/sort_command.h"

#include "apps/kivsys/commands/run_outcome.h"
#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/output/outcome_json.h"
#include "platform/console/console_host.h"
#include "sort/sort_on_instrument.h"

namespace kiv {
namespace {

int sortNames(ConsoleHost& console, const std::string& namesFile, const SortOptions& options) {
  NamesTable names;
  ItemTable items;
  const ReadBack readBack = options.guarded ? ReadBack::yes : ReadBack::no;
  const bool normalEnd =
      endsNormally(console, [&] { cmdSortInstrument_Click(console.host(), namesFile, names, items, readBack); });
  const RunOutcome outcome = writingOutcomeOf(names, console, normalEnd);
  return printOutcome(options.json ? asJson(outcome) : createdLines(outcome),
                      normalEnd ? exit_status::normal : exit_status::critical);
}

}  // namespace

int runSort(const SortOptions& options) {
  ConsoleHost console;
  return runOnSelection(console, options.selection,
                        [&](const std::string& namesFile) { return sortNames(console, namesFile, options); });
}

}  // namespace kiv
