#include "shell/cmd_convert.h"

#include <algorithm>
#include <limits>
#include <string_view>

#include "conversion/convert_system.h"
#include "conversion/report_index.h"
#include "input/file_names.h"
#include "input/files.h"
#include "mus/writer.h"
#include "shell/wait_label.h"
#include "sort/sort_on_instrument.h"

namespace kiv {
namespace {

/// The name of a system's result: the number and suffix at the end of the first result's name are replaced.
std::string resultName(Host& host, const std::string& firstResultFile, std::int16_t system) {
  constexpr std::size_t numberAndSuffix = std::string_view("0001.MUS").size();
  constexpr std::size_t digits = 4;
  const auto stem = withoutLastCharacters(host, firstResultFile, numberAndSuffix);
  if (!stem) {
    host.runTimeError("Invalid procedure call or argument", firstResultFile);
  }
  const std::string number = std::to_string(system);
  return *stem + std::string(digits - std::min(digits, number.size()), '0') + number + ".MUS";
}

void askBeforeOverwriting(KivSystem& program, bool exists) {
  Host& host = program.host;
  if (program.panel.chkOverwrite.checked || !exists) {
    return;
  }
  const std::string question = "File exists: " + program.musFileName + "\r\n\r\nOverwrite?";
  if (host.message(Icon::exclamation, question, Buttons::yesNo) == Answer::no) {
    host.fatal("Abnormal termination forced by user.");
  }
}

/// Returns whether the result took the place of a file.
bool writeResult(KivSystem& program, std::int16_t system, std::string& room) {
  Host& host = program.host;
  const SystemPage page{host, program.musFileName, program.items};
  program.musFileName = resultName(host, program.panel.txtFirstResultFile.text, system);
  if (program.panel.chkShowInstrNumber.checked) {
    showInstrumentNumbers(page);
  }
  const bool exists = FileExists(host, program.musFileName);
  askBeforeOverwriting(program, exists);
  sortOnInstrument(host, program.musFileName, program.items);
  outputBraces(page, program.braces);
  writeFile(host, program.musFileName, program.items, room);
  return exists;
}

/// Drops the files that no later system takes a staff from.
void dropFinished(const ReportIndex& report, const std::vector<StaffRecord>& staves, std::int16_t system,
                  KeptFiles& files) {
  for (const StaffRecord& staff : staves) {
    if (report.lastUse.find(staff.file)->second <= system) {
      files.drop(staff.file);
    }
  }
}

/// The number of the next system; one that 16 bits do not hold ends the program.
std::int16_t nextSystem(KivSystem& program, std::int16_t system) {
  if (system == std::numeric_limits<std::int16_t>::max()) {
    program.host.runTimeError(RunTimeError::overflow, program.musFileName);
  }
  return static_cast<std::int16_t>(system + 1);
}

/// Converts the systems 1, 2, 3 ... up to the first without a record. Returns their number.
int convertSystems(KivSystem& program, const ReportIndex& report) {
  Host& host = program.host;
  const int all = report.systemCount();
  KeptFiles files;
  std::string room;  // of the results
  for (std::int16_t system = nextSystem(program, 0); system <= all; system = nextSystem(program, system)) {
    host.showProgress(system - 1, all, "systems");
    const std::vector<StaffRecord> staves = stavesOf(host, report, system);
    convertSystem(host, system, staves, program.musFileName, program.items, program.order, program.braces,
                  program.firstClefs, files);
    dropFinished(report, staves, system, files);
    if (writeResult(program, system, room)) {
      files.dropAll();
    }
  }
  host.showProgress(all, all, "systems");
  return all;
}

}  // namespace

void cmdConvert_Click(KivSystem& program) {
  showWait(program, "Wait for conversion to finish");
  program.braces = {};
  const ReportIndex report = readReport(program.host);
  setInstrumentOrder(program.host, report.instruments, program.order);
  const int systems = convertSystems(program, report);
  hideWait(program);
  program.host.inform("Created " + std::to_string(systems) + " files.\r\nFirst is " +
                      program.panel.txtFirstResultFile.text + "\r\nLast is " + program.musFileName);
}

}  // namespace kiv
