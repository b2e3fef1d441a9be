#include "apps/kivsys/commands/report_command.h"

#include <utility>

#include "apps/kivsys/commands/draw_command.h"
#include "apps/kivsys/commands/report_requests.h"
#include "apps/kivsys/commands/valid_pages.h"
#include "apps/kivsys/corrections/correct_on_reading.h"
#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/output/next_step.h"
#include "apps/kivsys/output/print_outcome.h"
#include "apps/kivsys/safety/output_file.h"
#include "apps/kivsys/safety/result_files.h"
#include "input/file_names.h"
#include "platform/console/console_host.h"
#include "platform/console/error_line.h"
#include "platform/console/printable.h"
#include "platform/console/shell_words.h"
#include "platform/default_program.h"
#include "report_page/gather_report.h"
#include "report_page/made_by.h"
#include "report_page/report_page.h"

namespace kiv {
namespace {

std::string shown(const std::string& text) {
  return NativeSystem::toUtf8(printable(text));
}

/// The run of one command.
class ReportRun {
 public:
  ReportRun(ConsoleHost& console, const ReportOptions& options)
      : console_(console),
        system_(console.system()),
        options_(options),
        out_(outputName(system_, options.out)),
        result_(options.result.empty() ? "" : system_.fullName(options.result)),
        corrections_(options.corrections.empty() ? "" : system_.fullName(options.corrections)) {}

  std::vector<std::string> refusals(const SelectedPages& pages);
  int run(const std::string& namesFile);

 private:
  std::optional<std::string> refusalOfBadPages(const SelectedPages& pages);
  report::GatheredReport gather(const report::ReportRequest& request);
  report::GatheredReport gatherOthers(report::ReportRequest request);
  report::ReportRequest requestFor(const std::string& namesFile);
  report::CommandParts commandsFor();
  int write(const report::GatheredReport& gathered);
  int open();

  ConsoleHost& console_;
  ConsoleSystem& system_;
  const ReportOptions& options_;
  std::string out_;
  std::string result_;
  std::string corrections_;
  bool hasBadPages_ = false;
  std::optional<report::GivenTable> table_;
};

/// A page that cannot be read is left out; one that can belongs to another group, or is to become the report.
std::optional<std::string> ReportRun::refusalOfBadPages(const SelectedPages& pages) {
  for (const FoundFile& page : pages.badPages) {
    const std::string path = system_.diskName(page.name);
    const bool isElsewhere =
        !pages.pages.empty() &&
        (folderOfPath(system_, path) != folderOfPath(system_, pages.pages[0].path) ||
         justPath(system_, system_.upperCase(page.name)) != justPath(system_, system_.upperCase(pages.pages[0].name)));
    if (isElsewhere && !readFailure(path)) {
      return "not in the folder of the first page: " + page.path;
    }
    if (!out_.empty() && system_.upperCase(page.name) == system_.upperCase(out_)) {
      return page.path + " is one of the pages; name another file for the report";
    }
  }
  return std::nullopt;
}

/// The report is none of the files that it is about: pages, results, corrections.
std::vector<std::string> ReportRun::refusals(const SelectedPages& pages) {
  hasBadPages_ = !pages.badPages.empty();
  if (!options_.result.empty()) {
    if (const auto reason = refusalOfResultName(options_.result)) {
      return {*reason};
    }
  }
  if (const auto reason = refusalOfBadPages(pages)) {
    return {*reason};
  }
  InputFiles inputs(pages);
  if (!result_.empty()) {
    constexpr std::size_t most = 32767;
    for (std::size_t number = 1; number <= most; ++number) {
      const std::string path = system_.diskName(report::resultName(result_, number));
      if (kindOf(path) == PathKind::missing) {
        if (number == 1) {
          return {"there is no result " + path};
        }
        break;
      }
      inputs.add(path);
    }
  }
  if (!corrections_.empty()) {
    inputs.add(system_.diskName(corrections_));
    TableProposals table = readProposals(system_, corrections_);
    if (!table.errors.empty()) {
      return table.errors;
    }
    CorrectedGroupPages corrected = correctedBy(system_, pages, {{options_.corrections}, ""});
    if (!corrected.errors.empty()) {
      return corrected.errors;
    }
    table_ = {shown(options_.corrections), std::move(table.proposals), std::move(corrected.pages)};
  }
  return refusalsOfOutput(system_, {"report", out_, OutputKind::htmlReport}, inputs);
}

report::CommandParts ReportRun::commandsFor() {
  report::CommandParts parts;
  if (canRepeat(options_.selection)) {
    parts.pages = shortArguments(system_, options_.selection);
  }
  parts.zeroIds = options_.allowZeroId ? " --allow-zero-id" : "";
  parts.newResult = newResultArgument(system_);
  parts.newFolder = fileWord(system_.newName("corrected"));
  parts.result = options_.result.empty() ? "" : " --result " + fileWord(options_.result);
  parts.table = options_.corrections.empty() ? "" : " --corrections " + fileWord(options_.corrections);
  const bool hasName = !options_.out.empty() && options_.out != standardOutput;
  parts.report = " -o " + (hasName ? fileWord(options_.out) : "report.html") + parts.result + parts.table +
                 (options_.all ? " --all" : "") + parts.zeroIds;
  parts.shown = shownCommand;
  return parts;
}

report::ReportRequest ReportRun::requestFor(const std::string& namesFile) {
  report::ReportRequest request;
  request.namesFile = namesFile;
  request.allowZeroId = options_.allowZeroId;
  request.allPictures = options_.all;
  request.commands = commandsFor();
  request.stepAfter = [this](const SkippedPage& page) {
    const std::string file = page.namedFile();
    return pageStep(page, {system_.shownName(file), system_.diskName(file)});
  };
  request.firstResult = result_;
  request.table = table_;
  return request;
}

report::GatheredReport ReportRun::gather(const report::ReportRequest& request) {
  const SelectedNames names(system_);
  const report::ReportHost host{system_, system_, console_.user(), shown,
                                [&](const std::string& file) { return shown(names.of(file)); }};
  const report::CsvWriter csv{std::string(correctionHeads) + "\n", [&](const Correction& correction) {
                                return correctionLine(correction, names.of(correction.at.file));
                              }};
  return report::gatherReport(host, request, csv);
}

/// The report of the pages that can be analyzed.
report::GatheredReport ReportRun::gatherOthers(report::ReportRequest request) {
  const ValidPages pages(console_, request.namesFile);
  request.skipped = pages.skipped();
  request.namesFile = pages.namesFile();
  return gather(request);
}

int ReportRun::open() {
  const std::string path = system_.diskName(out_);
  if (const auto failure = openWithDefaultProgram(path)) {
    printError("cannot open " + path + ": " + *failure);
    return exit_status::critical;
  }
  return exit_status::normal;
}

int ReportRun::write(const report::GatheredReport& gathered) {
  const std::string page = report::reportPage(gathered.data);
  if (out_.empty()) {
    out_ = temporaryReport(system_);
    if (out_.empty()) {
      printError("cannot make a folder for temporary files");
      return exit_status::critical;
    }
  }
  int status = deliver(system_, out_, page, OutputKind::htmlReport);
  if (status != exit_status::normal || out_ == standardOutput) {
    return status;
  }
  status = printOutcome(printable(system_.shownName(out_)) + ": " + gathered.data.headline + "\n", status);
  return options_.open && status == exit_status::normal ? open() : status;
}

int ReportRun::run(const std::string& namesFile) {
  const report::ReportRequest request = requestFor(namesFile);
  report::GatheredReport gathered;
  if (!hasBadPages_) {
    gathered = gather(request);
  }
  const bool isIncomplete = hasBadPages_ || gathered.ended;
  if (isIncomplete) {
    gathered = gatherOthers(request);
  }
  if (gathered.ended) {
    console_.user().show(*gathered.ended);
    return exit_status::critical;
  }
  gathered.data.made = report::madeBy(system_, "kivsys");
  const int status = write(gathered);
  if (status != exit_status::normal) {
    return status;
  }
  if (isIncomplete) {
    return exit_status::critical;
  }
  return options_.strict && gathered.hasFindings ? exit_status::notUsable : exit_status::normal;
}

}  // namespace

int runReport(const ReportOptions& typed) {
  ReportOptions options = typed;
  options.result = resultIn(typed.result);
  ConsoleHost console;
  ReportRun report(console, options);
  const SelectionUse use{FolderUse::read, true, [&](const SelectedPages& pages) { return report.refusals(pages); }, {}};
  return runOnSelection(console, options.selection, use,
                        [&](const std::string& namesFile) { return report.run(namesFile); });
}

}  // namespace kiv
