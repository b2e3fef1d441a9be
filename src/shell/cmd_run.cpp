#include "shell/cmd_run.h"

#include "input/file_names.h"
#include "messages/analysis_messages.h"
#include "messages/input_messages.h"
#include "shell/cmd_convert.h"
#include "shell/start_up.h"
#include "shell/wait_label.h"

namespace kiv {
namespace {

/// Reports that there is nothing to analyze; without a panel that ends the program.
void reportNoInput(const KivSystem& program) {
  const Message message = messages::noInputFiles(program.settings.namesFile);
  if (!isInteractiveMode(program.settings.commandLine)) {
    endProgram(message);
  }
  program.host.user.show(message);
}

AnalyzedGroup analyzedGroup(const KivSystem& program) {
  const std::vector<std::string>& names = program.names.nameList;
  return {{names.begin(), names.begin() + program.names.nameCount}, program.settings.allowZeroInstrId, ""};
}

}  // namespace

void offerConversion(KivSystem& program, Qualification qualification) {
  if (qualification == Qualification::doesNotQualify) {
    program.panel.cmdConvert.enabled = true;
  } else if (program.host.user.show(messages::convertNow()) == Answer::yes) {
    program.panel.cmdConvert.enabled = true;
    cmdConvert_Click(program);
  }
}

void cmdRun_Click(KivSystem& program) {
  const Panel before = program.panel;
  showWait(program, "Wait for analysis to finish");
  if (!loadSelection(program)) {
    reportNoInput(program);
    hideWait(program);
    program.panel = before;
    return;
  }
  program.panel.txtFirstResultFileTag = justPath(program.host.machine, program.names.name(1));
  program.panel.txtFirstResultFile.text = firstResultFile(program.host.machine, program.names);
  refuseReservedName(program.names);
  analyzePages(program, {program.settings.allowZeroInstrId, program.panel.chkDebug.checked});
  hideWait(program);
  writeVerdict(program);
  program.analyzed = analyzedGroup(program);
  if (isInteractiveMode(program.settings.commandLine)) {
    offerConversion(program, showAnalysisResult(program));
  }
}

}  // namespace kiv
