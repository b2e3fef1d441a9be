#include "shell/select_files.h"

#include "input/files.h"
#include "messages/shell_messages.h"
#include "platform/external_programs.h"

namespace kiv {
namespace {

constexpr std::int32_t noFileList = 461;

void requireModule(const Host& host, const std::string& path, const std::string& name) {
  if (!FileExists(host, path)) {
    endProgram(messages::moduleMissing(name));
  }
}

}  // namespace

void setSelectedFileButtons(KivSystem& program) {
  const Settings& settings = program.settings;
  const NamesTable& names = program.names;
  LoadNamesTable(program.host, settings.namesFile, program.names);
  program.panel.cmdViewNames.enabled = names.namesValid;
  program.panel.cmdRun.enabled = names.namesValid;
  const std::string file = "Names file " + settings.namesFile + " has ";
  if (names.nameCount == 1) {
    program.panel.cmdViewNames.tooltip = file + "one filename: " + GetLongName(program.host, names.name(1));
  } else if (names.nameCount > 1) {
    program.panel.cmdViewNames.tooltip =
        file + std::to_string(names.nameCount) + " filenames, the first: " + GetLongName(program.host, names.name(1));
  }
}

void cmdSelectFiles_Click(KivSystem& program) {
  const Settings& settings = program.settings;
  requireModule(program.host, settings.namesExe, "KIVNAMES.EXE");
  ShellAndWait(program.host, settings.namesExe + " STARTDIR=" + settings.currentFolder +
                                 ",SUFFIX=" + settings.fileType + ",MUSFOLDER=" + settings.musFolder +
                                 ",NAMESFILE=" + settings.namesFile + ",DEBUG=NO");
  setSelectedFileButtons(program);
}

void cmdSelectFiles_OLEDragDrop(KivSystem& program, const std::optional<std::vector<std::string>>& files) {
  const Settings& settings = program.settings;
  if (!files) {
    program.host.user.show(messages::dropError(noFileList));
    return;
  }
  std::string list;
  for (const std::string& file : *files) {
    list += file + ",";
  }
  requireModule(program.host, settings.oleExe, "KIVOLE.EXE");
  const auto failure =
      tryShellAndWait(program.host, settings.oleExe + " STARTDIR=" + settings.currentFolder +
                                        ",NAMESFILE=" + settings.namesFile + ",DEBUG=NO,TYPE=MUS,LIST=" + list);
  if (failure) {
    program.host.user.show(messages::dropError(failure->number));
    return;
  }
  setSelectedFileButtons(program);
}

}  // namespace kiv
