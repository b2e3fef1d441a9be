#include "apps/kivsys/selection/selection.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "apps/kivsys/corrections/correct_on_reading.h"
#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/layout/layout_table.h"
#include "apps/kivsys/safety/made_folder.h"
#include "apps/kivsys/selection/page_arguments.h"
#include "apps/kivsys/selection/panel_selection.h"
#include "apps/kivsys/selection/stopped_run.h"
#include "input/file_names.h"
#include "messages/codes.h"
#include "messages/console_words.h"
#include "platform/console/error_line.h"
#include "platform/console/printable.h"
#include "platform/console/stop_signals.h"
#include "platform/separators.h"
#include "survey/survey.h"

namespace kiv {
namespace {

/// Locks the folders that the command writes into, and makes the folder of the run when it is missing: after the lock,
/// so that a run that is refused makes none. Returns the exit status of a run that ends here.
int prepareFolders(ConsoleHost& console, const Selection& selection, const SelectionUse& use,
                   const SelectedPages& pages) {
  const auto locked = [&] {
    return !use.writtenFolders || console.locks().take(use.writtenFolders(pages), selection.wait);
  };
  if (!locked()) {
    return exit_status::busy;
  }
  const PlannedFolder folder(console.system(), selection.folder, selection.folder);
  if (selection.folder.empty() || use.folder != FolderUse::written || !folder.isMissing()) {
    return exit_status::normal;
  }
  if (const auto failure = folder.make(console.system().journal(), console.user())) {
    printError(*failure);
    return exit_status::critical;
  }
  return locked() ? exit_status::normal : exit_status::busy;
}

/// Makes the folder of the run the current one. Returns why it cannot be. What is not written needs none.
std::vector<std::string> enterFolderOfRun(NativeSystem& system, const Selection& selection, FolderUse use) {
  const bool isNeeded =
      !selection.folder.empty() &&
      (use != FolderUse::planned || !PlannedFolder(system, selection.folder, selection.folder).isMissing());
  return isNeeded && !system.enterFolder(selection.folder) ? std::vector{"cannot enter the folder " + selection.folder}
                                                           : std::vector<std::string>();
}

std::vector<std::string> refusalsOf(ConsoleSystem& system, const Selection& selection, const SelectionUse& use,
                                    const SelectedPages& pages) {
  std::vector<std::string> reasons = pages.errors;
  if (!selection.folder.empty() && use.folder != FolderUse::read) {
    if (const auto reason = PlannedFolder(system, selection.folder, selection.folder).refusal()) {
      reasons.push_back(*reason);
    }
  }
  if (reasons.empty() && use.refusals) {
    reasons = use.refusals(pages);
  }
  return reasons;
}

/// The line that says in which order the pages are used.
std::string reorderingNote(Machine& machine, const SelectedPages& pages) {
  constexpr std::size_t mostNames = 6;
  constexpr std::size_t firstNames = 3;
  const std::size_t count = pages.pages.size();
  std::string names;
  for (std::size_t p = 0; p < count; ++p) {
    if (count <= mostNames || p < firstNames) {
      names += (p == 0 ? "" : ", ") + withoutPath(machine, pages.pages[p].name);
    }
  }
  if (count > mostNames) {
    names += " ... " + withoutPath(machine, pages.pages.back().name);
  }
  return "kivsys: note: the pages are taken in natural order: " + printable(names) + "; --keep-order keeps theirs\n";
}

/// Adds the tables of the selection to its files, and lets the pages be read with its corrections. Returns why they
/// cannot be.
std::vector<std::string> refusalsOfTables(ConsoleSystem& system, const Selection& selection, const SelectionUse& use,
                                          SelectedPages& pages) {
  if (const std::string layout = pathOfLayout(system, selection.layout); !layout.empty()) {
    pages.tables.push_back(layout);
    system.protectFile(layout);
  }
  if (selection.corrections.files.empty() || !pages.errors.empty()) {
    return {};
  }
  const auto& tables = selection.corrections.files;
  pages.isInputATable = std::find(tables.begin(), tables.end(), "-") != tables.end();
  return correctOnReading(system, pages, selection.corrections,
                          use.skipsBadPages ? CorrectedBadPages::skipped : CorrectedBadPages::refused);
}

void printSelectionNotes(ConsoleHost& console, const SelectionUse& use, const SelectedPages& pages) {
  for (const std::string& words : pages.leftOut) {
    console.user().printNotes("kivsys: note: " + printable(words) + "\n");
  }
  for (const std::string& page : use.usesPagesOnce ? std::vector<std::string>() : pages.repeated) {
    console.user().printNotes("kivsys: warning: " + printable(page) +
                              " is named more than once, and counts as a page each time\n");
  }
  if (pages.isReordered) {
    console.user().printNotes(reorderingNote(console.system(), pages));
  }
  if (const PageCorrections& corrections = console.system().corrections(); !corrections.tables.empty()) {
    console.user().printNotes(correctionNote(corrections));
  }
}

/// A folder that is missing is not made for a run that will refuse to write.
FolderUse folderUse(NativeSystem& system, const Selection& selection, const SelectionUse& use,
                    const std::string& namesFile) {
  const bool isMade = use.folder == FolderUse::written && !selection.folder.empty() &&
                      PlannedFolder(system, selection.folder, selection.folder).isMissing();
  return isMade && use.isRefused && use.isRefused(namesFile) ? FolderUse::planned : use.folder;
}

/// Finds the pages, and prepares everything for a run on them. Returns the exit status of a run that ends here. What is
/// known of the pages is not kept; the run has a names file, whose name is put into the text.
int prepareRun(ConsoleHost& console, const Selection& selection, const SelectionUse& use, std::string& namesFile) {
  ConsoleSystem& system = console.system();
  const PageSearch search{folderOfRun(system, selection), selection.keepOrder, use.skipsBadPages};
  SelectedPages pages = selection.names.empty() ? findTypedPages(system, selection.pages, search)
                                                : findListedPages(system, selection.names, search);
  system.bindPages(pages.pages);
  system.showAs(pages.badPages);
  for (const std::string& path : pages.badPaths) {
    system.protectFile(path);
  }
  system.protectFile(pages.listPath);
  system.serveNamesFile(pages.namesFile, pages.names);
  if (const auto reasons = refusalsOfTables(system, selection, use, pages); !reasons.empty()) {
    return refuse(reasons);
  }
  if (const auto reasons = refusalsOf(system, selection, use, pages); !reasons.empty()) {
    return refuse(reasons);
  }
  printSelectionNotes(console, use, pages);
  SelectionUse made = use;
  made.folder = folderUse(system, selection, use, pages.namesFile);
  if (const int status = prepareFolders(console, selection, made, pages); status != exit_status::normal) {
    return status;
  }
  // Others may have changed the folders while the run read its tables, or waited for another one.
  if (refreshStamps(pages)) {
    system.countAsOpened(pages.pages);
  }
  if (use.writtenFolders) {
    if (const auto reasons = refusalsOf(system, selection, use, pages); !reasons.empty()) {
      return refuse(reasons);
    }
  }
  if (const auto reasons = enterFolderOfRun(system, selection, made.folder); !reasons.empty()) {
    return refuse(reasons);
  }
  namesFile = pages.namesFile;
  return exit_status::normal;
}

int runGuarded(ConsoleHost& console, const Selection& selection, const SelectionUse& use,
               const std::function<int(const std::string& namesFile)>& run) {
  if (const auto reason = refusalOfName(selection.folder, "folder")) {
    return refuse({*reason});
  }
  std::string namesFile;
  const int status = prepareRun(console, selection, use, namesFile);
  return status != exit_status::normal ? status : run(namesFile);
}

/// Whether the analysis has ended over one page of several, which --keep-going would have skipped.
bool endedOverAPage(ConsoleHost& console) {
  constexpr std::array<std::string_view, 8> ofAPage = {
      code::structureError, code::tooManyItems,        code::noSystemBarline, code::naming,
      code::namingNoNumber, code::subscriptOutOfRange, code::overflow,        code::namesFileMissing};
  if (console.messages().empty()) {
    return false;
  }
  const PathTable& pages = console.system().pageTable();
  const auto& last = console.messages().back().message;
  if (isNote(last) || std::find(ofAPage.begin(), ofAPage.end(), last.code) == ofAPage.end() ||
      !pages.find(last.location.file)) {
    return false;
  }
  std::vector<std::string> names;
  names.reserve(pages.size());
  for (std::size_t page = 0; page < pages.size(); ++page) {
    names.emplace_back(pages.name(page));
  }
  return countPages(console.system(), names) > 1;
}

}  // namespace

int refuse(const std::vector<std::string>& reasons) {
  for (const std::string& reason : reasons) {
    printError(reason);
  }
  return exit_status::wrongUsage;
}

int fail(const std::string& reason) {
  printError(reason);
  return exit_status::critical;
}

std::string folderOfRun(NativeSystem& system, const Selection& selection) {
  std::string folder = selection.folder.empty() ? system.currentFolder() : system.fullName(selection.folder);
  if (folder.size() > 1 && endsWithBackslash(system, folder) && !folder.ends_with(":\\")) {
    folder.pop_back();
  }
  return folder;
}

int runOnSelection(ConsoleHost& console, const Selection& selection, const SelectionUse& use,
                   const std::function<int(const std::string& namesFile)>& run) {
  noteStopSignals(SecondSignal::isNoted);
  if (!selection.likePanel) {
    console.useConsoleWords();
  }
  if (selection.quiet) {
    console.user().beQuiet();
    console.locks().waitSilently();
  }
  int status = exit_status::critical;
  const auto ended = exitCodeOf(console.user(), [&] {
    status = selection.likePanel ? runLikePanel(console, selection, run) : runGuarded(console, selection, use, run);
  });
  if (use.takesKeepGoing && !use.skipsBadPages && !selection.likePanel && endedOverAPage(console)) {
    console.user().printNotes("kivsys: note: --keep-going skips bad pages and uses the others\n");
  }
  if (const int signal = stopSignal(); signal != 0) {
    return reportStop(console, signal);
  }
  return ended.value_or(status);
}

}  // namespace kiv
