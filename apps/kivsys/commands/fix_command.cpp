#include "apps/kivsys/commands/fix_command.h"

#include <set>
#include <utility>

#include "apps/kivsys/commands/fix_requests.h"
#include "apps/kivsys/commands/run_outcome.h"
#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/output/fix_output.h"
#include "apps/kivsys/output/print_outcome.h"
#include "apps/kivsys/safety/input_files.h"
#include "apps/kivsys/safety/result_folder.h"
#include "apps/kivsys/undo/run_journal.h"
#include "platform/bounded_file.h"
#include "platform/console/error_line.h"
#include "platform/native_file.h"
#include "platform/separators.h"
#include "repair/fix_plan.h"
#include "repair/page_ids.h"

namespace kiv {
namespace {

/// Many times what a page has: all of the file is kept, whatever follows its trailer.
constexpr std::size_t mostBytes = 16 * most_bytes::mebibyte;

/// A page, before it is corrected and after.
struct Page {
  FoundFile file;      ///< the page as it was selected
  std::string output;  ///< the corrected one, as the core names it
  std::string before;
  std::string after;
};

/// The selected pages, each once.
std::vector<FoundFile> distinct(const std::vector<FoundFile>& selected) {
  std::vector<FoundFile> pages;
  std::set<std::string> paths;
  for (const FoundFile& page : selected) {
    if (paths.insert(page.path).second) {
      pages.push_back(page);
    }
  }
  return pages;
}

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
  int run();

 private:
  std::vector<std::string> refusalsInPlace(const SelectedPages& pages);
  std::vector<std::string> refusalsOfOutputs(const std::vector<FoundFile>& pages, const InputFiles& inputs);
  std::optional<std::string> put(const Page& page);
  std::string outputOf(const FoundFile& page);
  bool readPages();
  std::vector<std::string> plan();
  bool isWritten(const Page& page) const;
  std::string pathOf(const Page& page);
  bool write();
  bool reportChanges();
  int fail(const std::string& reason);

  ConsoleSystem& system_;
  ConsoleHost& console_;
  const FixOptions& options_;
  std::string out_;  // the folder, as the core names it, with its backslash
  ResultFolder folder_;
  std::vector<Page> pages_;
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

/// Why the pages cannot be replaced: one is also a table of corrections, the list of the pages, or another page.
std::vector<std::string> FixRun::refusalsInPlace(const SelectedPages& pages) {
  InputFiles others;
  for (const std::string& table : options_.corrections) {
    others.addTyped(system_, table);
  }
  if (!pages.listPath.empty()) {
    others.add(pages.listPath);
  }
  if (pages.namesFile == "-") {
    others.addStandardInput();
  }
  std::vector<std::string> reasons;
  for (const FoundFile& page : distinct(pages.pages)) {
    if (const auto reason = others.refusalToReplace("corrected page", page.path)) {
      reasons.push_back(*reason);
    }
    others.add(page.path);
  }
  return reasons;
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
    return refusalsInPlace(pages);
  }
  if (const auto reason = folder_.refusal()) {
    return {*reason};
  }
  InputFiles inputs(pages);
  for (const std::string& table : options_.corrections) {
    inputs.addTyped(system_, table);
  }
  return refusalsOfOutputs(distinct(pages.pages), inputs);
}

/// Why the corrected pages cannot be written. They are looked at twice: others may write while corrections are read.
std::vector<std::string> FixRun::refusalsOfOutputs(const std::vector<FoundFile>& pages, const InputFiles& inputs) {
  std::vector<std::string> reasons;
  if (kindOf(folder_.path()) == PathKind::missing) {
    return reasons;  // it will be made, whatever there is in another case
  }
  for (const FoundFile& page : pages) {
    const std::string path = system_.outputPath(outputOf(page));
    const PathKind kind = kindOf(path);
    if (const auto reason = inputs.refusalToReplace("corrected page", path)) {
      reasons.push_back(*reason);
    } else if (kind == PathKind::folder) {
      reasons.push_back(path + " is a folder, and is not replaced");
    } else if (kind == PathKind::file && !options_.force) {
      reasons.push_back(path + " exists; --force replaces it");
    }
  }
  return reasons;
}

bool FixRun::readPages() {
  for (const FoundFile& file : distinct(system_.pages())) {
    BoundedContent content = readBounded(system_, file.name, mostBytes);
    if (!content.bytes) {
      fail(content.isTooLarge ? file.path + " " + tooLarge(mostBytes, "a page") : "cannot read " + file.path);
      return false;
    }
    pages_.push_back({file, outputOf(file), std::move(*content.bytes), ""});
  }
  return true;
}

/// Finds out what changes in the pages. Returns why nothing is to be changed.
std::vector<std::string> FixRun::plan() {
  const FixRequests requests = readRequests(system_, options_);
  std::vector<std::string> errors = requests.errors;
  std::vector<repair::PageToFix> pages;
  for (const Page& page : pages_) {
    auto ids = repair::idsOf(page.before);
    if (!ids) {
      errors.push_back(page.file.path + " is damaged; kivsys recover saves what it still holds");
    }
    pages.push_back({nameOfPage(system_, page.file.name), std::move(ids).value_or(std::vector<repair::PageId>())});
  }
  if (!errors.empty()) {
    return errors;
  }
  repair::FixPlan plan = repair::planFix(pages, requests.requests, requests.mappings);
  for (std::size_t page = 0; page < pages_.size() && plan.errors.empty(); ++page) {
    auto after = repair::withIds(pages_[page].before, plan.changes[page]);
    if (!after) {
      return {pages_[page].file.path + " would have more than 32767 words"};
    }
    pages_[page].after = std::move(*after);
  }
  report_.undecided = requests.undecided;
  report_.leftOut = requests.leftOut;
  return plan.errors;
}

/// A page that takes its own place is written only when it changes.
bool FixRun::isWritten(const Page& page) const {
  return !options_.dryRun && (!options_.inPlace || page.after != page.before);
}

std::string FixRun::pathOf(const Page& page) {
  return options_.inPlace ? page.file.path : system_.outputPath(page.output);
}

std::optional<std::string> FixRun::put(const Page& page) {
  if (options_.inPlace) {
    return page.after == page.before ? std::nullopt : system_.replacePage(page.output, page.after);
  }
  return options_.force ? system_.replaceFile(page.output, page.after) : system_.createFile(page.output, page.after);
}

bool FixRun::write() {
  for (const Page& page : pages_) {
    system_.keepPrivacyOf(page.file.path);
  }
  for (done_ = 0; done_ < pages_.size(); ++done_) {
    const Page& page = pages_[done_];
    if (const auto failure = put(page)) {
      fail("cannot write " + pathOf(page) + ": " + *failure);
      return false;
    }
  }
  return flushResults(console_);
}

/// Finds out from the files themselves what is different in the corrected pages, as far as they were written.
bool FixRun::reportChanges() {
  for (std::size_t p = 0; p < done_; ++p) {
    const Page& page = pages_[p];
    const std::string path = pathOf(page);
    const auto bytes = options_.dryRun ? std::optional(page.after) : readBounded(system_, page.output, mostBytes).bytes;
    const auto changes = bytes ? repair::changedIds(page.before, *bytes) : std::nullopt;
    if (!changes || *bytes != page.after) {
      fail("the corrected page " + path + " is not as it was written");
      return false;
    }
    report_.pages.push_back({page.file.path, isWritten(page) ? path : "", *changes});
  }
  return true;
}

int FixRun::run() {
  if (!readPages()) {
    return exit_status::critical;
  }
  if (const auto reasons = plan(); !reasons.empty()) {
    return refuse(reasons);
  }
  report_.dryRun = options_.dryRun;
  report_.all = pages_.size();
  done_ = pages_.size();
  if (!options_.dryRun) {
    if (const int status = !options_.inPlace && folder_.isMissing() ? folder_.make(console_) : exit_status::normal;
        status != exit_status::normal) {
      return status;
    }
    const auto reasons =
        options_.inPlace ? std::vector<std::string>() : refusalsOfOutputs(distinct(system_.pages()), InputFiles());
    if (!reasons.empty()) {
      return refuse(reasons);
    }
    report_.normalEnd = write();
  }
  report_.normalEnd = reportChanges() && report_.normalEnd;
  const auto shownName = [&](const std::string& path) { return system_.shownName(NativeSystem::coreName(path)); };
  return printOutcome(options_.json ? asJson(report_) : asText(report_, shownName),
                      report_.normalEnd ? exit_status::normal : exit_status::critical);
}

}  // namespace

int runFix(const FixOptions& options) {
  ConsoleHost console;
  RunJournal journal(console.system(), "fix", options.inPlace ? UndoNeed::required : UndoNeed::wanted);
  useJournal(console.system(), journal, !options.noUndo && !options.dryRun);
  FixRun fix(console, options);
  SelectionUse use{FolderUse::read, false, [&](const SelectedPages& pages) { return fix.refusals(pages); }, {}};
  if (!options.dryRun) {
    use.writtenFolders = [&](const SelectedPages& pages) { return fix.writtenFolders(pages); };
  }
  return runOnSelection(console, options.selection, use, [&](const std::string&) { return fix.run(); });
}

}  // namespace kiv
