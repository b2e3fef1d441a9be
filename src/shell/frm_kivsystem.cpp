#include "shell/frm_kivsystem.h"

#include "shell/cmd_convert.h"
#include "shell/cmd_run.h"
#include "shell/result_folder.h"
#include "shell/select_files.h"
#include "sort/sort_on_instrument.h"

namespace kiv {

void cmdReturn_Click() {
  throw ProgramEnd{0};
}

void chkIggZeroInstrId_Click(KivSystem& program) {
  program.settings.allowZeroInstrId = program.panel.chkIggZeroInstrId.checked;
}

void clicked(KivSystem& program, Control Panel::*control) {
  if (control == &Panel::cmdSelectFiles) {
    cmdSelectFiles_Click(program);
  } else if (control == &Panel::cmdViewNames) {
    cmdViewNames_Click(program.host, program.settings.namesFile);
  } else if (control == &Panel::cmdRun) {
    cmdRun_Click(program);
  } else if (control == &Panel::cmdConvert) {
    cmdConvert_Click(program);
  } else if (control == &Panel::cmdReturn) {
    cmdReturn_Click();
  } else if (control == &Panel::cmdSortInstrument) {
    const std::string last =
        cmdSortInstrument_Click(program.host, program.settings.namesFile, program.names, program.items);
    program.musFileName = last.empty() ? program.musFileName : last;
  } else if (control == &Panel::chkIggZeroInstrId) {
    chkIggZeroInstrId_Click(program);
  } else if (control == &Panel::txtFirstResultFile) {
    txtFirstResultFile_Click(program);
  }
}

}  // namespace kiv
