#include "apps/kivsys/commands/fix_command.h"

#include <utility>

#include "apps/kivsys/commands/fix_requests.h"
#include "apps/kivsys/commands/run_outcome.h"
#include "apps/kivsys/corrections/doubled_ids.h"
#include "apps/kivsys/corrections/planned_pages.h"
#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/layout/layout_table.h"
#include "apps/kivsys/output/fix_output.h"
#include "apps/kivsys/output/print_outcome.h"
#include "apps/kivsys/safety/input_files.h"
#include "apps/kivsys/safety/result_folder.h"
#include "apps/kivsys/undo/run_journal.h"
#include "diagnostics/number_ranges.h"
#include "platform/bounded_file.h"
#include "platform/console/error_line.h"
#include "platform/native_file.h"
#include "platform/separators.h"
#include "repair/page_ids.h"

namespace kiv {
namespace {

constexpr std::size_t mostShown = 20;

std::string withBackslash(Machine& machine, const std::string& folder) {
  return endsWithBackslash(machine, folder) ? folder : folder + "\\";
}

/// Corrects the pages of one selection.
class FixRun {
 public:
  FixRun(ConsoleHost& console, const FixOptions& options)
      : system_(console.system()),
        console_(console),
        options_(options),
        out_(withBackslash(system_, system_.fullName(options.out))),
        folder_(system_, NativeSystem::exactPath(out_), options.out) {}

  /// Why the corrected pages of these cannot be written. None: they can.
  std::vector<std::string> refusals(const SelectedPages& pages);
  /// The folders that the run writes into.
  std::vector<std::string> writtenFolders(const SelectedPages& pages);
  int run(const std::string& namesFile);

 private:
  std::vector<std::string> refusalsOfOutputs(const std::vector<FoundFile>& pages, const InputFiles& inputs);
  std::optional<std::string> put(const PlannedPage& page);
  std::string outputOf(const FoundFile& page);
  bool readPages();
  std::vector<std::string> addRenumbering(IdRequests& requests);
  std::vector<std::string> plan();
  bool isWritten(const PlannedPage& page) const;
  std::string pathOf(const PlannedPage& page);
  bool write();
  bool reportChanges();
  int fail(const std::string& reason);

  ConsoleSystem& system_;
  ConsoleHost& console_;
  const FixOptions& options_;
  std::string out_;  // the folder, as the core names it, with its backslash
  ResultFolder folder_;
  std::vector<PlannedPage> pages_;
  std::size_t done_ = 0;  // the pages that were written, or need not be
  FixReport report_;
};

int FixRun::fail(const std::string& reason) {
  printError(reason);
  return exit_status::critical;
}

/// The corrected page has the name of its original, in another folder unless it takes its place.
std::string FixRun::outputOf(const FoundFile& page) {
  if (options_.inPlace) {
    return page.name;
  }
  return out_ + page.path.substr(folderOfPath(system_, page.path).size());
}

/// The folders of the corrected pages. Those of pages that links lead to belong to their own runs.
std::vector<std::string> FixRun::writtenFolders(const SelectedPages& pages) {
  if (!options_.inPlace) {
    return {folder_.path()};
  }
  std::vector<std::string> folders;
  for (const FoundFile& page : pages.pages) {
    const std::string folder = folderOfPath(system_, page.path);
    folders.push_back(folder.empty() ? "." : folder);
  }
  return folders;
}

std::vector<std::string> FixRun::refusals(const SelectedPages& pages) {
  if (options_.inPlace) {
    return refusalsInPlace(system_, options_, pages);
  }
  if (const auto reason = folder_.refusal()) {
    return {*reason};
  }
  InputFiles inputs(pages);
  for (const std::string& table : options_.corrections.files) {
    inputs.addTyped(system_, table);
  }
  return refusalsOfOutputs(distinctPages(pages.pages), inputs);
}

/// Why the corrected pages cannot be written. They are looked at twice: others may write while corrections are read. A
/// dry run only reports pages that are in the way.
std::vector<std::string> FixRun::refusalsOfOutputs(const std::vector<FoundFile>& pages, const InputFiles& inputs) {
  std::vector<std::string> reasons;
  report_.refusals.clear();
  if (kindOf(folder_.path()) == PathKind::missing) {
    return reasons;  // it will be made, whatever there is in another case
  }
  for (const FoundFile& page : pages) {
    const std::string path = system_.outputPath(outputOf(page));
    const PathKind kind = kindOf(path);
    if (const auto reason = inputs.refusalToReplace("corrected page", path)) {
      reasons.push_back(*reason);
    } else if (kind == PathKind::folder) {
      report_.refusals.push_back(path + " is a folder, and is not replaced");
    } else if (kind == PathKind::file && !options_.force) {
      report_.refusals.push_back(path + " exists; --force replaces it");
    }
  }
  if (!options_.dryRun) {
    reasons.insert(reasons.end(), report_.refusals.begin(), report_.refusals.end());
  }
  return reasons;
}

bool FixRun::readPages() {
  for (const FoundFile& file : distinctPages(system_.pages())) {
    PlannedPage page{file, "", "", {}};
    if (const std::string error = readPage(system_, page); !error.empty()) {
      fail(error);
      return false;
    }
    pages_.push_back(std::move(page));
  }
  return true;
}

/// Adds the new ids of the instruments in a table. Returns why there are none: the table does not have them all.
std::vector<std::string> FixRun::addRenumbering(IdRequests& requests) {
  const std::string& typed = options_.selection.layout;
  LayoutTable table;
  auto errors = readLayoutTable(system_, typed, LayoutCells::names, table);
  if (typed.empty() || !errors.empty()) {
    return errors;
  }
  std::vector<std::int16_t> ids;
  for (const ListedInstrument& instrument : table.instruments) {
    ids.push_back(instrument.id);
  }
  requests.mappings = repair::inRisingOrder(ids, "--renumber " + typed);
  std::vector<std::string> words;
  for (const repair::IdMapping& mapping : requests.mappings) {
    words.push_back(std::to_string(mapping.oldId) + " -> " + std::to_string(mapping.newId));
  }
  auto reasons = refusalsOf(compareWithTable(system_, table, false), table);
  if (reasons.empty()) {
    console_.user().printNotes("kivsys: note: new ids: " + (words.empty() ? "none" : joined(words, mostShown)) + "\n");
  }
  return reasons;
}

/// Finds out what changes in the pages. Returns why nothing is to be changed.
std::vector<std::string> FixRun::plan() {
  IdRequests requests = readRequests(system_, options_);
  if (auto reasons = addRenumbering(requests); !reasons.empty()) {
    return reasons;
  }
  report_.undecided = requests.undecided;
  report_.leftOut = requests.leftOut;
  auto reasons = planPages(system_, requests, pages_);
  return reasons.empty() && options_.inPlace ? refusalsToWrite(pages_) : reasons;
}

/// A page that takes its own place is written only when it changes.
bool FixRun::isWritten(const PlannedPage& page) const {
  return !options_.dryRun && (!options_.inPlace || page.after != page.before);
}

std::string FixRun::pathOf(const PlannedPage& page) {
  return options_.inPlace ? page.file.path : system_.outputPath(outputOf(page.file));
}

std::optional<std::string> FixRun::put(const PlannedPage& page) {
  const std::string output = outputOf(page.file);
  if (options_.inPlace) {
    return page.after == page.before ? std::nullopt : system_.replacePage(output, page.after);
  }
  return options_.force ? system_.replaceFile(output, page.after) : system_.createFile(output, page.after);
}

bool FixRun::write() {
  for (const PlannedPage& page : pages_) {
    system_.keepPrivacyOf(page.file.path);
  }
  for (done_ = 0; done_ < pages_.size(); ++done_) {
    const PlannedPage& page = pages_[done_];
    console_.user().showProgress(static_cast<int>(done_), static_cast<int>(pages_.size()), "pages");
    if (const auto failure = put(page)) {
      fail("cannot write " + pathOf(page) + ": " + *failure);
      return false;
    }
  }
  console_.user().showProgress(static_cast<int>(done_), static_cast<int>(done_), "pages");
  return flushResults(console_);
}

/// Finds out from the files themselves what is different in the corrected pages, as far as they were written.
bool FixRun::reportChanges() {
  for (std::size_t p = 0; p < done_; ++p) {
    const PlannedPage& page = pages_[p];
    const std::string path = pathOf(page);
    const auto bytes =
        options_.dryRun ? std::optional(page.after) : readBounded(system_, outputOf(page.file), most_bytes::page).bytes;
    const auto changes = bytes ? repair::changedIds(page.before, *bytes) : std::nullopt;
    if (!changes || *bytes != page.after) {
      fail("the corrected page " + path + " is not as it was written");
      return false;
    }
    report_.pages.push_back({page.file.path, isWritten(page) ? path : "", *changes});
  }
  return true;
}

int FixRun::run(const std::string& namesFile) {
  if (!readPages()) {
    return exit_status::critical;
  }
  if (const auto reasons = plan(); !reasons.empty()) {
    return refuse(reasons);
  }
  report_.dryRun = options_.dryRun;
  report_.doubled = newlyDoubled(console_, namesFile, pages_);
  report_.all = pages_.size();
  done_ = pages_.size();
  if (!options_.dryRun) {
    if (const int status = !options_.inPlace && folder_.isMissing() ? folder_.make(console_) : exit_status::normal;
        status != exit_status::normal) {
      return status;
    }
    const auto reasons =
        options_.inPlace ? std::vector<std::string>() : refusalsOfOutputs(distinctPages(system_.pages()), InputFiles());
    if (!reasons.empty()) {
      return refuse(reasons);
    }
    report_.normalEnd = write();
  }
  report_.normalEnd = reportChanges() && report_.normalEnd;
  const auto shownName = [&](const std::string& path) { return system_.shownName(NativeSystem::coreName(path)); };
  const auto nameOf = [&](const std::string& name) { return system_.shownName(name); };
  console_.user().printNotes(options_.json ? "" : warningLines(report_, nameOf));
  return printOutcome(options_.json ? asJson(report_, nameOf) : asText(report_, shownName),
                      report_.normalEnd ? exit_status::normal : exit_status::critical);
}

}  // namespace

int runFix(const FixOptions& options) {
  ConsoleHost console;
  if (options.json) {
    console.user().hideProgress();
  }
  RunJournal journal(console.system(), "fix", options.inPlace ? UndoNeed::required : UndoNeed::wanted);
  const JournalUse journaled(console.system(), journal, !options.noUndo && !options.dryRun);
  FixRun fix(console, options);
  SelectionUse use{FolderUse::read, false, [&](const SelectedPages& pages) { return fix.refusals(pages); }, {}};
  use.usesPagesOnce = true;
  if (!options.dryRun) {
    use.writtenFolders = [&](const SelectedPages& pages) { return fix.writtenFolders(pages); };
  }
  return runOnSelection(console, options.selection, use,
                        [&](const std::string& namesFile) { return fix.run(namesFile); });
}

}  // namespace kiv
