#include "shell/result_folder.h"

#include "input/files.h"
#include "platform/external_programs.h"
#include "platform/line_reader.h"

namespace kiv {
namespace {

/// Runs the module in the place of the panel.
void chooseFolder(KivSystem& program, const std::string& folderExe, const std::string& folderAnswerFile) {
  Host& host = program.host;
  host.setPointer(Pointer::hourglass);
  program.panel.visible = false;
  host.processEvents();
  ShellAndWait(host, folderExe + " REMARK=Select output folder,STARTDIR=" + program.settings.currentFolder +
                         ",FILE=" + folderAnswerFile + ",DEBUG=NO");
  program.panel.visible = true;
  host.processEvents();
  host.setPointer(Pointer::normal);
}

}  // namespace

std::string SetFolderResult(Host& host, const std::string& folderAnswerFile) {
  auto file = host.openInput(folderAnswerFile);
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
    program.host.inform("Module KIVFOLDR.EXE not properly installed. Name of default folder cannot be modified.");
    return;
  }
  chooseFolder(program, folderExe, folderAnswerFile);
  const std::string folder = SetFolderResult(program.host, folderAnswerFile);
  if (folder.empty()) {
    program.host.inform("Failed to open output folder");
    return;
  }
  program.panel.txtFirstResultFile.text = folder + (folder.ends_with('\\') ? "" : "\\") + "WORK0001.MUS";
}

}  // namespace kiv
