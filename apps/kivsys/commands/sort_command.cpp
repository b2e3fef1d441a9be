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
  const ReadBack readBack = options.likePanel ? ReadBack::no : ReadBack::yes;
  const bool isSorted =
      endsNormally(console, [&] { cmdSortInstrument_Click(console.host(), namesFile, names, items, readBack); });
  const bool normalEnd = flushResults(console) && isSorted;
  const RunOutcome outcome = writingOutcomeOf(names, console, normalEnd);
  return printOutcome(options.json ? asJson(outcome) : createdLines(outcome),
                      normalEnd ? exit_status::normal : exit_status::critical);
}

}  // namespace

int runSort(const SortOptions& options) {
  ConsoleHost console(options.likePanel ? Guard::off : Guard::on);
  const WrittenFolders written{false, !options.likePanel, "", options.wait};
  return runOnSelection(
      console, options.selection, [&](const std::string& namesFile) { return sortNames(console, namesFile, options); },
      written);
}

}  // namespace kiv
