#include "shell/analysis_run.h"

#include <utility>

#include "analysis/page_checks.h"
#include "analysis/page_outline.h"
#include "analysis/page_systems.h"
#include "analysis/report.h"
#include "input/file_names.h"
#include "input/files.h"
#include "messages/analysis_messages.h"
#include "messages/input_messages.h"

namespace kiv {
namespace {

constexpr std::string_view firstResult = "WORK0001.MUS";

void countMultifilePages(PageTable& pages) {
  for (const PageEntry& page : pages.pages) {
    pages.multifileCount = static_cast<std::int16_t>(pages.multifileCount + (page.isMultifile() ? 1 : 0));
  }
}

/// The files of the pages, in the order in which they are read. As long as it lives they are expected to be.
class ExpectedFiles {
 public:
  ExpectedFiles(Files& files, Machine& machine, const PageTable& pages, FileOutliner& outliner) : files_(files) {
    std::vector<std::string> names;
    names.reserve(pages.pages.size());
    for (const PageEntry& page : pages.pages) {
      for (std::string& name : filesOf(machine, page)) {
        names.push_back(std::move(name));
      }
    }
    files_.expectReading(names, &outliner);
  }
  ExpectedFiles(const ExpectedFiles&) = delete;
  ExpectedFiles& operator=(const ExpectedFiles&) = delete;
  ~ExpectedFiles() { files_.expectReading({}, nullptr); }

 private:
  Files& files_;
};

/// The analysis of one page after the other.
class PageAnalysis {
 public:
  PageAnalysis(KivSystem& program, const AnalysisOptions& options)
      : program_(program),
        options_(options),
        inputFolder_(justPath(program.host.machine, program.names.name(1))),
        reader_(program.host.files, program.host.user, program.host.machine, options.observer),
        report_(options.systems != nullptr ? Report(*options.systems, program.host.machine)
                                           : Report(program.host.files, program.host.machine)) {}

  void run() {
    report_.writeHead(program_.settings.versionText, program_.pages);
    User& user = program_.host.user;
    const int all = static_cast<int>(program_.pages.pages.size());
    int done = 0;
    PageOutliner outliner(options_.observer);
    const ExpectedFiles expected(program_.host.files, program_.host.machine, program_.pages, outliner);
    for (const PageEntry& page : program_.pages.pages) {
      user.showProgress(done, all, "pages");
      analyze(page);
      ++done;
    }
    user.showProgress(done, all, "pages");
  }

 private:
  void analyze(const PageEntry& page) {
    program_.musFileName = reader_.read(page, inputFolder_, program_.items, program_.firstClefs);
    const TableRows rows(program_.items);
    const PageSystems systems = numberSystems(program_.items, rows.staves, systemBase_);
    const PageProblems problems = checkPage(program_.items, rows, systems);
    showProblems(program_.host.user, problems, {page.isMultifile(), program_.musFileName}, options_.allowZeroInstrId);
    report_.writePage(program_.items, rows);
    if (options_.observer != nullptr) {
      options_.observer->endPage(program_.items, rows.staves);
    }
  }

  KivSystem& program_;
  const AnalysisOptions& options_;
  std::string inputFolder_;
  PageReader reader_;
  Report report_;
  std::int16_t systemBase_ = 0;
};

}  // namespace

bool loadSelection(KivSystem& program) {
  LoadNamesTable(program.host, program.settings.namesFile, program.names);
  return program.names.nameCount > 0;
}

std::string firstResultFile(Machine& machine, const NamesTable& names) {
  return justPath(machine, names.name(1)) + std::string(firstResult);
}

void refuseReservedName(const NamesTable& names) {
  const std::string& first = names.name(1);
  if (isReservedName(first)) {
    endProgram(messages::reservedName(first));
  }
}

bool isReservedName(std::string_view name) {
  return name.ends_with(firstResult);
}

void analyzePages(KivSystem& program, const AnalysisOptions& options) {
  program.firstClefs = {};
  program.pages = groupPages(program.host, program.names);
  countMultifilePages(program.pages);
  PageAnalysis(program, options).run();
  if (options.viewReport) {
    ViewFile(program.host, reportFile);
  }
}

void writeVerdict(KivSystem& program) {
  phase5(program.host.files, program.pages.multifileCount, program.systems);
}

void analyzeSelection(KivSystem& program, const AnalysisOptions& options) {
  User& user = program.host.user;
  user.setPointer(Pointer::hourglass);
  user.processEvents();
  if (!loadSelection(program)) {
    endProgram(messages::noInputFiles(program.settings.namesFile));
  }
  refuseReservedName(program.names);
  analyzePages(program, options);
  user.setPointer(Pointer::normal);
  if (options.systems != nullptr) {
    options.systems->finish();
  } else {
    writeVerdict(program);
  }
}

Qualification showAnalysisResult(KivSystem& program) {
  Files& files = program.host.files;
  const Verdict verdict = readVerdict(files);
  if (verdict.qualifies()) {
    program.host.user.show(messages::qualifies());
    throw ProgramEnd{0};
  }
  program.host.user.show(messages::analysisResult(
      {program.names.nameCount, numberOfInstruments(files), verdict.consistency, verdict.multifile}));
  return Qualification::doesNotQualify;
}

}  // namespace kiv
