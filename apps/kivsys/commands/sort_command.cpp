#include "apps/kivsys/commands/sort_command.h"

#include "apps/kivsys/commands/run_outcome.h"
#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/output/outcome_json.h"
#include "apps/kivsys/safety/input_files.h"
#include "platform/console/console_host.h"
#include "platform/console/error_line.h"
#include "sort/sort_on_instrument.h"

namespace kiv {
namespace {

/// Whether every page has its sorted one; a line on standard error when not.
bool sortedAll(ConsoleHost& console) {
  const std::size_t pages = console.system().pages().size();
  const std::size_t sorted = console.replacedFiles().size();
  if (sorted < pages) {
    printError("only " + std::to_string(sorted) + " of " + std::to_string(pages) + " pages were sorted");
  }
  return sorted >= pages;
}

int sortNames(ConsoleHost& console, const std::string& namesFile, const SortOptions& options) {
  NamesTable names;
  ItemTable items;
  const ReadBack readBack = options.selection.likePanel ? ReadBack::no : ReadBack::yes;
  const bool isSorted =
      endsNormally(console, [&] { cmdSortInstrument_Click(console.host(), namesFile, names, items, readBack); });
  const bool areAllSorted = options.selection.likePanel || !isSorted || sortedAll(console);
  const bool normalEnd = flushResults(console) && isSorted && areAllSorted;
  const RunOutcome outcome = writingOutcomeOf(names, console, normalEnd);
  return printOutcome(options.json ? asJson(outcome) : createdLines(outcome),
                      normalEnd ? exit_status::normal : exit_status::critical);
}

/// The pages that a sort writes, by their paths on the disk.
std::vector<std::pair<std::string, std::string>> sortedPages(ConsoleSystem& system, const SelectedPages& pages) {
  std::vector<std::pair<std::string, std::string>> sorted;
  for (const FoundFile& page : pages.pages) {
    if (const auto name = sortedName(system, system.upperCase(page.name))) {
      sorted.emplace_back("sorted page", system.outputPath(*name));
    }
  }
  return sorted;
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
  const SelectionUse use{FolderUse::written, false,
                         [&](const SelectedPages& pages) {
                           console.system().bindFolder();
                           return InputFiles(pages).refusals(sortedPages(console.system(), pages));
                         },
                         [&](const SelectedPages& pages) { return folderOfPages(console.system(), pages); }};
  return runOnSelection(console, options.selection, use,
                        [&](const std::string& namesFile) { return sortNames(console, namesFile, options); });
}

}  // namespace kiv
