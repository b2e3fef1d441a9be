// Any bytes as the program's command line, and as names of page files.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "analysis/page_table.h"
#include "analysis/report.h"
#include "analysis/verdict.h"
#include "fuzz/support/expect.h"
#include "fuzz/support/fuzz_host.h"
#include "fuzz/support/parts.h"
#include "input/file_names.h"
#include "pagetext/page_text.h"
#include "shell/start_up.h"

namespace kiv::fuzz {
namespace {

bool isOf(std::string_view text, bool (*test)(char)) {
  return std::all_of(text.begin(), text.end(), test);
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

bool isLetter(char c) {
  return c >= 'A' && c <= 'Z';
}

void checkName(Machine& machine, const std::string& path) {
  expect(justPath(machine, path) + withoutPath(machine, path) == path, "a path is its folder and its name");
  const std::string name = withoutPath(machine, machine.upperCase(path));
  const std::string part = extractPartName(machine, path);
  const std::string number = extractPartNumb(machine, path);
  const std::string page = extractPartPage(machine, path);
  const std::string suffix = extractPartSuff(machine, path);
  expect(name.starts_with(part), "the name part begins the name");
  expect(isOf(number, isDigit), "the number part is of digits");
  expect(isOf(page, isLetter), "the page part is of letters");
  expect(name.ends_with(suffix) && (suffix.empty() || suffix.starts_with('.')), "the suffix part ends the name");
  const std::string stem = name.substr(0, name.size() - suffix.size());
  expect(stem.ends_with(number + page), "number and page letters stand before the suffix");
  const std::int16_t groups = IsGroupOfDigits(machine, path);
  expect(groups == 1 || groups == 2, "there are one or two groups of digits");
  for (const std::size_t count : {std::size_t{0}, std::size_t{3}, std::size_t{8}}) {
    const auto rest = withoutLastCharacters(machine, path, count);
    expect(rest.has_value() == (path.size() >= count) && (!rest || path.starts_with(*rest)), "a name loses its end");
  }
}

/// Every line is a file of a selection, and files are grouped into no more pages than there are of them.
void checkGrouping(FuzzHost& host, std::string_view lines) {
  NamesTable names;
  forEachLine(lines, [&](std::string_view line) {
    names.nameList.push_back("C:\\M\\" + host.machine.upperCase(line));
    ++names.nameCount;
  });
  PageTable table;
  if (exitCodeOf(host.user, [&] { table = groupPages(host.host(), names); })) {
    return;
  }
  std::size_t files = 0;
  for (const PageEntry& page : table.pages) {
    files += page.isMultifile() ? page.pageLetters.size() : 1;
    expect(page.pageLetters.size() != 1, "a page of one file has no letters");
  }
  expect(files == names.nameList.size(), "every file is of one page");
}

void addFiles(FuzzFiles& files) {
  static const std::string page = std::get<std::string>(
      buildPage("staff 1 at 0 lines 5 instrument 3\nbarline 1 at 0 spans 2\nstaff 2 at 0 lines 5 instrument 4\n"));
  files.addFile("C:\\N.TXT", "C:\\M\\X1.MUS 1\r\n");
  files.addFile("C:\\M\\X1.MUS", page);
  files.addFile("C:\\KIV\\KIVPROJ.PRO", "NamesFile=C:\\N.TXT\r\n");
  files.addFile(reportFile, "of an earlier run");
  files.addFile(verdictFile, "of an earlier run");
}

/// No result of an earlier run is left, and there is a verdict only after an analysis that ended successfully.
void checkStart(const std::string& commandLine) {
  FreshProgram fresh;
  addFiles(fresh.files);
  const auto end = exitCodeOf(fresh.user, [&] { Form_Load(fresh.program, commandLine); });
  const std::string* verdict = fresh.files.find(verdictFile);
  expect(end == 0 ? verdict != nullptr && *verdict == "CONSISTENCY=YES\r\nMULTIFILE=NO\r\n" : verdict == nullptr,
         "there is a verdict after an analysis");
  expect(fresh.files.find(reportFile) == nullptr || *fresh.files.find(reportFile) != "of an earlier run",
         "no report of an earlier run is left");
  if (isInteractiveMode(commandLine)) {
    expect(!end, "the panel is shown");
  } else if (isAnalysisMode(commandLine)) {
    expect(end && *end >= 0 && *end <= 1, "an analysis ends the program");
  } else {
    expect(end == 1 && fresh.user.lastText() == "Invalid call to KivSystem:\r\n" + commandLine,
           "any other call is refused");
  }
}

void run(std::string_view text) {
  const std::string line(text);
  checkStart(line);
  FreshProgram fresh;
  addFiles(fresh.files);
  expect(exitCodeOf(fresh.user, [&] { refuseCall(fresh.program, line); }) == 1, "a refusal ends the program");
  expect(fresh.files.find(reportFile) == nullptr && fresh.files.find(verdictFile) == nullptr,
         "a refusal leaves no results of an earlier run");
  checkName(fresh.machine, line);
  checkGrouping(fresh, text);
}

}  // namespace
}  // namespace kiv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  kiv::fuzz::run(kiv::fuzz::textOf(data, size));
  return 0;
}
