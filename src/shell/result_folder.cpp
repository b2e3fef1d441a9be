#include "shell/result_folder.h"

#include "input/files.h"
#include "messages/shell_messages.h"
#include "platform/external_programs.h"
#include "platform/line_reader.h"
#include "platform/separators.h"

namespace kiv {
namespace {

/// Runs the module while the panel is hidden.
void chooseFolder(KivSystem& program, const std::string& folderExe, const std::string& folderAnswerFile) {
  const Host& host = program.host;
  host.user.setPointer(Pointer::hourglass);
  program.panel.visible = false;
  host.user.processEvents();
  ShellAndWait(host, folderExe + " REMARK=Select output folder,STARTDIR=" + program.settings.currentFolder +
                         ",FILE=" + folderAnswerFile + ",DEBUG=NO");
  program.panel.visible = true;
  host.user.processEvents();
  host.user.setPointer(Pointer::normal);
}

}  // namespace

std::string SetFolderResult(Files& files, const std::string& folderAnswerFile) {
  auto file = files.openInput(folderAnswerFile);
  if (!file) {
    return "";
  }
  std::string folder;
  LineReader lines(std::move(file));
  while (const auto line = lines.next()) {
    if (!line->empty() && !line->starts_with('*')) {
      folder = line->substr(0, line->find_last_not_of(' ') + 1);
    }
  }
  return folder;
}

void txtFirstResultFile_Click(KivSystem& program) {
  const std::string folderExe = program.settings.currentFolder + "\\KIVFOLDR.EXE";
  const std::string folderAnswerFile = "KIVFOLDR.KIV";
  if (!FileExists(program.host, folderExe)) {
    program.host.user.show(messages::folderModuleMissing());
    return;
  }
  chooseFolder(program, folderExe, folderAnswerFile);
  const std::string folder = SetFolderResult(program.host.files, folderAnswerFile);
  if (folder.empty()) {
    program.host.user.show(messages::folderAnswerNotRead());
    return;
  }
  program.panel.txtFirstResultFile.text =
      folder + (endsWithBackslash(program.host.machine, folder) ? "" : "\\") + "WORK0001.MUS";
}

}  // namespace kiv
