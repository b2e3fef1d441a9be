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
#include "messages/input_messages.h"
#include "platform/bounded_file.h"
#include "platform/console/error_line.h"
#include "platform/native_file.h"
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

/// Corrects the pages of one selection.
class FixRun {
 public:
  FixRun(ConsoleHost& console, const FixOptions& options)
      : system_(console.system()),
        console_(console),
        options_(options),
        out_(system_.fullName(options.out)),
        folder_(system_, system_.diskName(out_), options.out) {}

  /// Why the corrected pages of these cannot be written. None: they can.
  std::vector<std::string> refusals(const SelectedPages& pages);
  std::vector<std::string> writtenFolders() { return {folder_.path()}; }
  int run();

 private:
  std::string outputOf(const FoundFile& page);
  bool readPages();
  std::vector<std::string> plan();
  bool write();
  bool reportChanges();
  int fail(const std::string& reason);

  ConsoleSystem& system_;
  ConsoleHost& console_;
  const FixOptions& options_;
  std::string out_;  // the folder, as the core names it
  ResultFolder folder_;
  std::vector<Page> pages_;
  FixReport report_;
};

int FixRun::fail(const std::string& reason) {
  printError(reason);
  return exit_status::critical;
}

/// The corrected page has the name of its original, in another folder.
std::string FixRun::outputOf(const FoundFile& page) {
  return out_ + "\\" + page.path.substr(folderOfPath(system_, page.path).size());
}

std::vector<std::string> FixRun::refusals(const SelectedPages& pages) {
  if (const auto reason = folder_.refusal()) {
    return {*reason};
  }
  InputFiles inputs(pages);
  for (const std::string& table : options_.corrections) {
    inputs.add(system_.diskName(NativeSystem::coreName(table)));
  }
  std::vector<std::string> reasons;
  for (const FoundFile& page : distinct(pages.pages)) {
    const std::string path = system_.outputPath(outputOf(page));
    if (const auto reason = inputs.refusalToReplace("corrected page", path)) {
      reasons.push_back(*reason);
    } else if (kindOf(path) == PathKind::file && !options_.force) {
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

bool FixRun::write() {
  for (const Page& page : pages_) {
    if (const auto failure = system_.replaceFile(page.output, page.after)) {
      fail("cannot write " + system_.outputPath(page.output) + ": " + *failure);
      return false;
    }
  }
  return flushResults(console_);
}

/// Finds out from the files themselves what is different in the corrected pages.
bool FixRun::reportChanges() {
  for (const Page& page : pages_) {
    const std::string path = system_.outputPath(page.output);
    const auto bytes = options_.dryRun ? std::optional(page.after) : readBounded(system_, page.output, mostBytes).bytes;
    const auto changes = bytes ? repair::changedIds(page.before, *bytes) : std::nullopt;
    if (!changes || *bytes != page.after) {
      fail("the corrected page " + path + " is not as it was written");
      return false;
    }
    report_.pages.push_back({page.file.path, options_.dryRun ? "" : path, *changes});
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
  if (!options_.dryRun) {
    if (const int status = folder_.isMissing() ? folder_.make(console_) : exit_status::normal;
        status != exit_status::normal) {
      return status;
    }
    report_.normalEnd = write();
  }
  report_.normalEnd = report_.normalEnd && reportChanges();
  return printOutcome(options_.json ? asJson(report_) : asText(report_),
                      report_.normalEnd ? exit_status::normal : exit_status::critical);
}

}  // namespace

int runFix(const FixOptions& options) {
  ConsoleHost console;
  RunJournal journal(console.system(), "fix", UndoNeed::wanted);
  useJournal(console.system(), journal, !options.noUndo && !options.dryRun);
  FixRun fix(console, options);
  SelectionUse use{FolderUse::read, false, [&](const SelectedPages& pages) { return fix.refusals(pages); }, {}};
  if (!options.dryRun) {
    use.writtenFolders = [&](const SelectedPages&) { return fix.writtenFolders(); };
  }
  return runOnSelection(console, options.selection, use, [&](const std::string&) { return fix.run(); });
}

}  // namespace kiv
