#include "shell/cmd_run.h"

#include <string_view>

#include "analysis/page_checks.h"
#include "analysis/page_systems.h"
#include "analysis/report.h"
#include "input/file_names.h"
#include "input/files.h"
#include "shell/cmd_convert.h"
#include "shell/start_up.h"
#include "shell/wait_label.h"

namespace kiv {
namespace {

constexpr std::string_view firstResult = "WORK0001.MUS";
constexpr std::string_view notQualified = "Input does NOT qualify for conversion";

/// Loads the names. False, after a message, when there are none to analyse; without a panel that ends the program.
bool loadSelection(KivSystem& program) {
  LoadNamesTable(program.host, program.settings.namesFile, program.names);
  if (program.names.nameCount > 0) {
    return true;
  }
  const std::string message = "No input files: " + program.settings.namesFile;
  if (!isInteractiveMode(program.settings.commandLine)) {
    program.host.fatal(message);
  }
  program.host.message(Icon::critical, message, Buttons::ok);
  return false;
}

void setResultFile(KivSystem& program) {
  const std::string& first = program.names.name(1);
  program.panel.txtFirstResultFileTag = justPath(first);
  program.panel.txtFirstResultFile.text = justPath(first) + std::string(firstResult);
  if (first.ends_with(firstResult)) {
    program.host.fatal("Input file cannot be " + first +
                       "\r\nThat name is reserved for output.\r\n"
                       "You need to rename the group of files (using KivRenam > File) and retry.");
  }
}

void countMultifilePages(PageTable& pages) {
  for (const PageEntry& page : pages.pages) {
    pages.multifileCount = static_cast<std::int16_t>(pages.multifileCount + (page.isMultifile() ? 1 : 0));
  }
}

void analysePage(KivSystem& program, const PageEntry& page, std::int16_t& systemBase, Report& report) {
  Host& host = program.host;
  readPage(host, page, program.panel.txtFirstResultFileTag, program.musFileName, program.items, program.firstClefs,
           program.reader);
  const PageSystems systems = numberSystems(host, program.musFileName, program.items, systemBase);
  const PageProblems problems = checkPage(host, program.musFileName, program.items, systems);
  if (program.observer != nullptr) {
    program.observer->pageChecked(page, program.musFileName, problems);
  }
  showProblems(host, problems, page.isMultifile(), program.settings.allowZeroInstrId, program.musFileName);
  report.writePage(program.items);
}

void analysePages(KivSystem& program) {
  Report report(program.host);
  countMultifilePages(program.pages);
  report.writeHead(program.settings.versionText, program.pages);
  std::int16_t systemBase = 0;
  const int all = static_cast<int>(program.pages.pages.size());
  int done = 0;
  for (const PageEntry& page : program.pages.pages) {
    program.host.showProgress(done, all, "pages");
    analysePage(program, page, systemBase, report);
    ++done;
  }
  program.host.showProgress(done, all, "pages");
}

/// Tells the person at the panel what came out, and ends the program when there is nothing to convert.
void tellResult(KivSystem& program) {
  Host& host = program.host;
  const auto [consistency, multifile] = readVerdict(host);
  if (consistency.ends_with("=YES") && multifile.ends_with("=NO")) {
    host.inform(
        "Input qualifies for conversion to one file per system.\r\n"
        "The resulting file(s) can be used as input to KivScore2XML and/or KivSplit.");
    throw ProgramEnd{0};
  }
  const std::string_view judgement = notQualified;
  host.inform("Result of the Analysis.\r\nNumber of files processed: " + std::to_string(program.names.nameCount) +
              "\r\nNumber of staves (instruments) per system: " + std::to_string(numberOfInstruments(host)) +
              "\r\n\r\n" + consistency + "\r\n" + multifile + "\r\n\r\n" + std::string(judgement) +
              "\r\nUse Convert button to create consistent input for KivScore2XML or KivSpli6.");
  offerConversion(program, judgement);
}

}  // namespace

void offerConversion(KivSystem& program, std::string_view judgement) {
  if (judgement == notQualified) {
    program.panel.cmdConvert.enabled = true;
  } else if (program.host.message(Icon::exclamation, "Convert?", Buttons::yesNo) == Answer::yes) {
    program.panel.cmdConvert.enabled = true;
    cmdConvert_Click(program);
  }
}

void cmdRun_Click(KivSystem& program) {
  const Panel before = program.panel;
  showWait(program, "Wait for analysis to finish");
  if (!loadSelection(program)) {
    hideWait(program);
    program.panel = before;
    return;
  }
  setResultFile(program);
  program.firstClefs = {};
  groupPages(program.host, program.names, program.musFileName, program.pages);
  analysePages(program);
  if (program.panel.chkDebug.checked) {
    ViewFile(program.host, reportFile);
  }
  hideWait(program);
  phase5(program.host, program.pages.multifileCount, program.systems);
  if (isInteractiveMode(program.settings.commandLine)) {
    tellResult(program);
  }
}

}  // namespace kiv
