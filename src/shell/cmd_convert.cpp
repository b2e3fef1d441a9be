#include "shell/cmd_convert.h"

#include "shell/conversion_run.h"
#include "shell/wait_label.h"

namespace kiv {

void cmdConvert_Click(KivSystem& program) {
  const Panel& panel = program.panel;
  showWait(program, "Wait for conversion to finish");
  const Message created = convertGroup(
      program, {panel.txtFirstResultFile.text, panel.chkOverwrite.checked, panel.chkShowInstrNumber.checked});
  hideWait(program);
  if (program.analyzed) {
    program.analyzed->firstResult = panel.txtFirstResultFile.text;
  }
  program.host.user.show(created);
}

}  // namespace kiv
