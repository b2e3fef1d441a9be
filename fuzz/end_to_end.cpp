// A group of pages from end to end: analyzed, converted, compared with the reference implementation, and the results
// read back.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "analysis/verdict.h"
#include "fuzz/support/conversion_check.h"
#include "fuzz/support/expect.h"
#include "fuzz/support/fuzz_host.h"
#include "fuzz/support/group_maker.h"
#include "fuzz/support/reference_check.h"
#include "shell/cmd_convert.h"
#include "shell/cmd_run.h"

namespace kiv::fuzz {
namespace {

constexpr const char* namesFile = "C:\\N.TXT";
/// One input of this number is compared with the reference implementation, which takes most of the time where it runs.
constexpr std::size_t inputsPerComparison = 4;

/// The tables of the reference implementation; nullopt where it does not run.
using ReferenceTables = std::optional<reference::Tables>;

/// False when something critical ended the program.
bool analyze(FreshProgram& fresh) {
  return exitCodeOf(fresh.user, [&] { cmdRun_Click(fresh.program); }).value_or(0) == 0;
}

void select(FuzzFiles& files, const Group& group) {
  std::string names;
  for (const Group::File& file : group.files) {
    files.addFile(file.name, file.bytes);
    names += file.name + " 1\r\n";
  }
  files.addFile(namesFile, names);
}

/// The same for the conversion.
bool convert(FreshProgram& fresh, ReferenceTables& tables) {
  const auto exitCode = tables ? convertBesideReference(fresh, *tables)
                               : exitCodeOf(fresh.user, [&] { cmdConvert_Click(fresh.program); });
  return exitCode.value_or(0) == 0;
}

/// Analyzes the group and converts it, whether it qualifies or not. False when something critical ended that.
bool run(FreshProgram& fresh, const Group& group, ReferenceTables& tables) {
  if (!analyze(fresh)) {
    return false;
  }
  checkAnalysis(fresh.files, group);
  fresh.program.panel.txtFirstResultFile.text = resultName(group, 1);
  if (!convert(fresh, tables)) {
    return false;
  }
  // Results that replace inputs have nothing left to be compared with.
  return group.besideInput || checkConversion(fresh.files, group) > 0;
}

/// The results, when they are staves in the same order on every page, qualify as they stand.
void analyzeResults(FreshProgram& fresh, const Group& group) {
  FuzzFiles& files = fresh.files;
  Group results;
  for (int number = 1; files.find(resultName(group, number)) != nullptr; ++number) {
    results.files.push_back({"C:\\M\\Y" + std::to_string(number) + ".MUS", *files.find(resultName(group, number))});
  }
  if (!qualify(files, group, static_cast<int>(results.files.size()))) {
    return;
  }
  select(files, results);
  expect(analyze(fresh), "results can be analyzed");
  checkAnalysis(files, results);
  expect(*files.find(verdictFile) == "CONSISTENCY=YES\r\nMULTIFILE=NO\r\n", "results qualify as they stand");
  expect(fresh.program.systems.systemCount() == results.files.size(), "every result is a system");
}

void run(const Group& group, bool compares) {
  FreshProgram fresh;
  select(fresh.files, group);
  KivSystem& program = fresh.program;
  program.settings.namesFile = namesFile;
  program.settings.commandLine = "CALLEDBY=KIV,FUNCTION=MAIN";
  program.settings.allowZeroInstrId = group.allowZeroId;
  program.panel.chkShowInstrNumber.checked = !group.hideNumbers;
  program.panel.chkOverwrite.checked = !group.asksFirst;
  ReferenceTables tables;
  if (compares) {
    tables.emplace();
  }
  const bool ended = run(fresh, group, tables) && (!group.runsTwice || group.besideInput || run(fresh, group, tables));
  if (ended && group.analyzesResults && !group.besideInput) {
    analyzeResults(fresh, group);
  }
}

}  // namespace
}  // namespace kiv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  kiv::fuzz::run(kiv::fuzz::makeGroup({data, size}), size % kiv::fuzz::inputsPerComparison == 0);
  return 0;
}
