#include "apps/kivsys/commands/sort_command.h"

#include <algorithm>

#include <nlohmann/json.hpp>

#include "apps/kivsys/commands/run_outcome.h"
#include "apps/kivsys/commands/warned_run.h"
#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/output/next_step.h"
#include "apps/kivsys/output/outcome_json.h"
#include "apps/kivsys/output/sort_output.h"
#include "apps/kivsys/output/warnings_output.h"
#include "apps/kivsys/safety/sorted_pages.h"
#include "apps/kivsys/selection/stopped_run.h"
#include "apps/kivsys/undo/run_journal.h"
#include "mus/format.h"
#include "platform/console/console_host.h"
#include "platform/console/error_line.h"
#include "platform/console/printable.h"
#include "sort/sort_on_instrument.h"

namespace kiv {
namespace {

/// Whether every page has its sorted one. A line on standard error says how many have not, unless the message about the
/// only page says so.
bool sortedAll(ConsoleHost& console, bool isSorted) {
  const std::size_t pages = console.system().pageTable().size();
  const std::size_t sorted = console.system().writtenFiles().size();
  if (sorted < pages && (isSorted || pages > 1)) {
    printError("only " + std::to_string(sorted) + " of " + std::to_string(pages) + " pages were sorted");
  }
  return sorted >= pages;
}

/// What is changed in the pages, beside their order.
Warnings showLosses(ConsoleHost& console, const SortOptions& options) {
  std::vector<std::string> pages;
  for (const FoundFile& page : console.system().pages()) {
    pages.push_back(page.name);
  }
  return showWarnings(console.user(), console.system(), findSortingLosses(console.system(), pages), options.json);
}

/// What has moved in each page that was sorted, a line each; "" for a run like the panel's.
std::string movedLines(ConsoleHost& console) {
  ConsoleSystem& system = console.system();
  const PathTable& pages = system.pageTable();
  const PathTable& sorted = system.writtenFiles();
  std::string lines;
  for (std::size_t p = 0; p < std::min(pages.size(), sorted.size()); ++p) {
    const std::string name(sorted.name(p));
    const auto before = readWhole(system, std::string(pages.name(p)), readableBytes);
    const auto after = readWhole(system, name, readableBytes);
    if (before && after) {
      lines += printable(system.shownName(name)) + ": " + movedStaves(*before, *after) + "\n";
    }
  }
  return lines;
}

int print(ConsoleHost& console, const RunOutcome& outcome, const Warnings& warnings, const SortOptions& options,
          int status) {
  if (!options.json) {
    return printOutcome(createdLines(outcome, namerOf(console, options.selection.likePanel)) + movedLines(console),
                        status);
  }
  LongObject object = jsonOf(outcome);
  const std::vector<Problem> problems = problemsOf(console.system(), outcome);
  object.setArray("problems", elementsOf(problems, warnings, outcome.paths));
  const auto next = options.selection.likePanel ? std::nullopt : stepForPage(outcome, console.system());
  const auto afterStop = stepAfterStop(console);
  object.plain()["next"] = nextJson(afterStop ? afterStop : next);
  object.plain()["schema_version"] = schemaVersion;
  return printOutcome([&](OutputText& text) { addLine(text, object); }, status);
}

int sortNames(ConsoleHost& console, const std::string& namesFile, const SortOptions& options) {
  NamesTable names;
  ItemTable items;
  const bool likePanel = options.selection.likePanel;
  const Warnings warnings = likePanel ? Warnings() : showLosses(console, options);
  if (options.strict && !warnings.messages.empty()) {
    printError("nothing is written, as there are warnings and --strict is given");
    return print(console, writingOutcomeOf(names, console, true), warnings, options, exit_status::notUsable);
  }
  for (const FoundFile& page : console.system().pages()) {
    console.system().keepPrivacyOf(page.path);
  }
  const ReadBack readBack = likePanel ? ReadBack::no : ReadBack::yes;
  const bool isSorted =
      endsNormally(console, [&] { cmdSortInstrument_Click(console.host(), namesFile, names, items, readBack); });
  const bool areAllSorted = likePanel || sortedAll(console, isSorted);
  const bool normalEnd = flushResults(console) && isSorted && areAllSorted;
  return print(console, writingOutcomeOf(names, console, normalEnd), warnings, options,
               normalEnd ? exit_status::normal : exit_status::critical);
}

std::vector<std::string> folderOfPages(ConsoleSystem& system, const SelectedPages& pages) {
  return pages.pages.empty() ? std::vector<std::string>{} : std::vector{folderOfPath(system, pages.pages.front().path)};
}

}  // namespace

int runSort(const SortOptions& options) {
  ConsoleHost console(options.selection.likePanel ? Guard::off : Guard::on);
  if (options.json) {
    console.user().hideProgress();
  }
  RunJournal journal(console.system(), "sort", UndoNeed::wanted);
  const JournalUse journaled(console.system(), journal, !options.noUndo);
  const SelectionUse use{FolderUse::read, false,
                         [&](const SelectedPages& pages) {
                           console.system().bindFolder();
                           return refusalsOfSortedPages(console.system(), pages);
                         },
                         [&](const SelectedPages& pages) { return folderOfPages(console.system(), pages); }};
  return runOnSelection(console, options.selection, use,
                        [&](const std::string& namesFile) { return sortNames(console, namesFile, options); });
}

}  // namespace kiv
