#include "tests/properties/group_conversion.h"

#include "mus/reader.h"
#include "mus/writer.h"
#include "shell/cmd_convert.h"
#include "shell/cmd_run.h"
#include "tests/reference/convert_group.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

const std::string inputFolder = "C:\\M\\";

std::string resultName(std::size_t system) {
  const std::string number = std::to_string(system);
  return "C:\\OUT\\WORK" + std::string(4 - number.size(), '0') + number + ".MUS";
}

std::string contentOf(OverlayFiles& files, const std::string& name) {
  const std::string* content = files.find(name);
  return content == nullptr ? "" : *content;
}

}  // namespace

GroupConversion::GroupConversion(const Group& group, bool showNumbers) {
  for (const auto& [name, text] : group.pages) {
    addInput(name, page(text));
  }
  run(showNumbers);
}

GroupConversion::GroupConversion(const GroupConversion& before, bool showNumbers) {
  for (std::size_t system = 1; system <= before.systems(); ++system) {
    addInput("X" + std::to_string(100 + system) + ".MUS", before.result(system));
  }
  run(showNumbers);
}

std::string GroupConversion::result(std::size_t system) const {
  return contentOf(files_, resultName(system));
}

std::string GroupConversion::input(const std::string& name) const {
  return contentOf(files_, inputFolder + name);
}

ItemTable& GroupConversion::readResult(std::size_t system) {
  static ItemTable table;
  readFile(files_, resultName(system), table);
  return table;
}

const ItemTable& GroupConversion::readInput(const std::string& name) {
  static ItemTable table;
  readFile(files_, inputFolder + name, table);
  return table;
}

std::string GroupConversion::writtenAgain(std::size_t system) {
  std::string bytes;
  encodePage(resultName(system), readResult(system), bytes);
  return bytes;
}

GroupConversion::Reference GroupConversion::convertByReference() const {
  OverlayFiles files("C:\\KIV", machine_);
  for (const std::string& name : files_.names()) {
    files.addFile(name, *files_.find(name));
  }
  SilentUser user;
  NoPrograms programs;
  reference::Tables tables;
  Reference reference;
  reference.lastMessage =
      reference::convertGroup({files, user, programs, machine_}, program_.firstClefs,
                              {resultName(1), true, program_.panel.chkShowInstrNumber.checked}, tables);
  for (const OverlayFiles::Replaced& result : files.replaced()) {
    reference.results.push_back(*files.find(result.name));
  }
  return reference;
}

void GroupConversion::addInput(const std::string& name, const std::string& bytes) {
  files_.addFile(inputFolder + name, bytes);
  names_ += inputFolder + name + " 1\r\n";
}

void GroupConversion::run(bool showNumbers) {
  files_.addFile("C:\\N.TXT", names_);
  program_.settings.namesFile = "C:\\N.TXT";
  program_.settings.commandLine = "CALLEDBY=KIV,FUNCTION=MAIN";
  program_.panel.chkShowInstrNumber.checked = showNumbers;
  click(cmdRun_Click);
  program_.panel.txtFirstResultFile.text = resultName(1);
  click(cmdConvert_Click);
}

void GroupConversion::click(void (*button)(KivSystem&)) {
  // A group that qualifies as it stands ends the program successfully.
  if (exitCodeOf(user_, [&] { button(program_); }).value_or(0) != 0) {
    RC_FAIL(user_.messages().back().text);
  }
}

}  // namespace kiv::test
