// A group of pages on its whole road: analysed, converted, and the results read back.

#include <cstdint>
#include <string>
#include <utility>

#include "analysis/verdict.h"
#include "fuzz/support/conversion_check.h"
#include "fuzz/support/expect.h"
#include "fuzz/support/fresh_program.h"
#include "fuzz/support/group_maker.h"
#include "shell/cmd_convert.h"
#include "shell/cmd_run.h"

namespace kiv::fuzz {
namespace {

constexpr const char* namesFile = "C:\\N.TXT";

/// Presses a button. False when something critical ended the program.
bool press(KivSystem& program, void (*button)(KivSystem&)) {
  return endOf([&] { button(program); }).value_or(0) == 0;
}

void select(MemoryHost& host, const Group& group) {
  std::string names;
  for (const Group::File& file : group.files) {
    host.addFile(file.name, file.bytes);
    names += file.name + " 1\r\n";
  }
  host.addFile(namesFile, names);
}

/// Analyses the group and converts it, whether it qualifies or not. False when something critical ended that.
bool run(MemoryHost& host, KivSystem& program, const Group& group) {
  if (!press(program, cmdRun_Click)) {
    return false;
  }
  checkAnalysis(host, group);
  program.panel.txtFirstResultFile.text = resultName(group, 1);
  if (!press(program, cmdConvert_Click)) {
    return false;
  }
  // Results that take the place of inputs have nothing left to be held against.
  return group.besideInput || checkConversion(host, group) > 0;
}

/// The results, when they are staves in the same order on every page, qualify as they stand.
void analyseResults(MemoryHost& host, KivSystem& program, const Group& group) {
  Group results;
  for (int number = 1; host.find(resultName(group, number)) != nullptr; ++number) {
    results.files.push_back({"C:\\M\\Y" + std::to_string(number) + ".MUS", *host.find(resultName(group, number))});
  }
  if (!qualify(host, group, static_cast<int>(results.files.size()))) {
    return;
  }
  select(host, results);
  expect(press(program, cmdRun_Click), "results can be analysed");
  checkAnalysis(host, results);
  expect(*host.find(verdictFile) == "CONSISTENCY=YES\r\nMULTIFILE=NO\r\n", "results qualify as they stand");
  expect(program.systems.systemCount() == results.files.size(), "every result is a system");
}

void run(const Group& group) {
  const FreshProgram fresh;
  MemoryHost& host = fresh.host;
  KivSystem& program = fresh.program;
  select(host, group);
  program.settings.namesFile = namesFile;
  program.settings.commandLine = "CALLEDBY=KIV,FUNCTION=MAIN";
  program.settings.allowZeroInstrId = group.allowZeroId;
  program.panel.chkShowInstrNumber.checked = !group.hideNumbers;
  program.panel.chkOverwrite.checked = !group.asksFirst;
  const bool ended = run(host, program, group) && (!group.runsTwice || group.besideInput || run(host, program, group));
  if (ended && group.analyseAgain && !group.besideInput) {
    analyseResults(host, program, group);
  }
}

}  // namespace
}  // namespace kiv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  kiv::fuzz::run(kiv::fuzz::makeGroup({data, size}));
  return 0;
}
