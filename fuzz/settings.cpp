// Any bytes as what the program reads of its surroundings: the project's settings file, the profile, the names file,
// and the answer of the module for folder choice.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/support/expect.h"
#include "fuzz/support/fuzz_host.h"
#include "fuzz/support/parts.h"
#include "shell/frm_kivsystem.h"
#include "shell/result_folder.h"
#include "shell/select_files.h"
#include "shell/start_up.h"

namespace kiv::fuzz {
namespace {

constexpr const char* projectFile = "C:\\KIV\\KIVPROJ.PRO";
constexpr const char* namesFile = "C:\\N.TXT";

/// The value of the last line that begins with the key.
std::string valueOf(std::string_view key, std::string_view project) {
  std::string value;
  forEachLine(project, [&](std::string_view line) {
    if (line.starts_with(key)) {
      value = line.substr(key.size());
    }
  });
  return value;
}

std::string answerIn(std::string_view answer) {
  std::string folder;
  forEachLine(answer, [&](std::string_view line) {
    if (!line.empty() && !line.starts_with('*')) {
      folder = withoutBlanks(line);
    }
  });
  return folder;
}

/// A click into the name of the first result puts it into the answer's folder, or leaves it.
void checkFolder(KivSystem& program, std::string_view answer) {
  const std::string before = program.panel.txtFirstResultFile.text;
  clicked(program, &Panel::txtFirstResultFile);
  const std::string folder = answerIn(answer);
  const std::string expected = folder + (folder.ends_with('\\') ? "" : "\\") + "WORK0001.MUS";
  expect(program.panel.txtFirstResultFile.text == (folder.empty() ? before : expected),
         "the first result lies in the folder that was chosen");
  expect(program.panel.visible, "the panel is back");
}

void run(std::string_view text) {
  const auto parts = partsOf<6>(text);
  const std::string& project = parts[0];
  const std::string& top = parts[1];
  const std::string& left = parts[2];
  const std::string& os = parts[3];
  const std::string& names = parts[4];
  const std::string& answer = parts[5];
  FreshProgram fresh;
  fresh.files.addFile(projectFile, project);
  fresh.files.addFile(namesFile, names);
  fresh.files.addFile("KIVFOLDR.KIV", answer);
  fresh.files.addFile("C:\\M\\A1.MUS", "");
  for (const char* module : {"C:\\KIV\\KIVNAMES.EXE", "C:\\KIV\\KIVOLE.EXE", "C:\\KIV\\KIVFOLDR.EXE"}) {
    fresh.files.addFile(module, "");
  }
  fresh.files.refusesDeletion = true;  // any of them may pass for a broken names file
  fresh.machine.profile = {{"TOP", top}, {"LEFT", left}, {"OS", os}};
  KivSystem& program = fresh.program;
  expect(!exitCodeOf(fresh.user, [&] { Form_Load(program, "CALLEDBY=KIV,FUNCTION=MAIN"); }),
         "the panel gets ready with any settings");
  expect(program.settings.musFolder == valueOf("MusDirectory=", project), "the music folder is the one set last");
  expect(program.settings.namesFile == valueOf("NamesFile=", project), "the names file is the one set last");
  expect(program.settings.osName == os.substr(0, 31), "the profile is read");
  expect(!exitCodeOf(fresh.user, [&] { cmdSelectFiles_Click(program); }), "files can be selected");
  expect(!exitCodeOf(fresh.user, [&] { cmdSelectFiles_OLEDragDrop(program, {{top, left}}); }), "files can be dropped");
  expect(!exitCodeOf(fresh.user, [&] { checkFolder(program, answer); }), "a folder can be chosen");
}

}  // namespace
}  // namespace kiv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  kiv::fuzz::run(kiv::fuzz::textOf(data, size));
  return 0;
}
