#include "tests/faults/runs.h"

#include "conversion/dump_memory.h"
#include "shell/cmd_convert.h"
#include "shell/cmd_run.h"
#include "shell/kivsystem.h"
#include "shell/result_folder.h"
#include "shell/start_up.h"
#include "sort/sort_on_instrument.h"
#include "tests/faults/failing_host.h"
#include "tests/faults/program/pages.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

void clickButtons(KivSystem& program) {
  Form_Load(program, "CALLEDBY=KIV,FUNCTION=MAIN");
  if (!program.panel.cmdRun.enabled) {
    return;
  }
  cmdRun_Click(program);
  if (!program.panel.cmdConvert.enabled) {
    return;
  }
  program.panel.chkOverwrite.checked = false;
  txtFirstResultFile_Click(program);
  cmdConvert_Click(program);
  dumpMemory(program.host, program.musFileName, program.items, program.order);
}

}  // namespace

const std::vector<std::string>& groupPages() {
  static const std::vector<std::string> names = {"C:\\M\\X001.MUS", "C:\\M\\X002A.MUS", "C:\\M\\X002B.MUS",
                                                 "C:\\M\\X003.MUS"};
  return names;
}

void prepareDisk(FakeHost& host) {
  const char* const texts[] = {duo, upperHalf, lowerHalf, solo};
  // The first read of the file ends in the middle of its third name.
  std::string names = "* four pages" + std::string(largestRead - 60, '.') + "\r\n";
  for (std::size_t i = 0; i < groupPages().size(); ++i) {
    host.addFile(groupPages()[i], page(texts[i]));
    names += groupPages()[i] + " 1\r\n";
  }
  host.showsTexts = true;
  host.addFile(namesFile, names);
  host.addFile(settingsFile, "MusDirectory=C:\\M\r\nNamesFile=" + namesFile + "\r\n");
  host.addFile("KIVFOLDR.EXE", "");
  host.addFile(answerFile, "* chosen\r\nC:\\OUT\r\n");
  host.addFile("KivSystem1.TXT", "old verdict");
  host.addFile("KivSystem2.TXT", "old report");
  host.addFile("C:\\OUT\\WORK0001.MUS", "old result");
  host.addFile("C:\\M\\WORK0001.MUS", "old result");
  host.addFile("C:\\M\\X001.PAG", "old sorted page");
}

std::string nameOf(RunKind run) {
  constexpr const char* names[] = {"Analysis", "Panel", "Sort"};
  return names[static_cast<int>(run)];
}

std::optional<int> perform(RunKind run, const Host& host) {
  KivSystem program(host);
  return endOf(host.user, [&] {
    switch (run) {
      case RunKind::analysis:
        Form_Load(program, "CALLEDBY=KIV,FUNCTION=ANALYZE,NAMES=" + namesFile);
        break;
      case RunKind::panel:
        clickButtons(program);
        break;
      case RunKind::sort:
        cmdSortInstrument_Click(host, namesFile, program.names, program.items);
        break;
    }
  });
}

}  // namespace kiv::test
