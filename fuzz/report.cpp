// Any bytes as a report: read back for the verdict, and converted from.

#include "analysis/report.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <set>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "analysis/report_index.h"
#include "analysis/verdict.h"
#include "fuzz/support/expect.h"
#include "fuzz/support/fuzz_host.h"
#include "fuzz/support/parts.h"
#include "fuzz/support/reference_check.h"
#include "pagetext/page_text.h"

namespace kiv::fuzz {
namespace {

/// The page that reports of the seeds name: two systems of two staves and of one.
const std::string& page() {
  static const std::string bytes = std::get<std::string>(
      buildPage("staff 1 at 0 lines 5 instrument 3\nclef 1 at 2 kind 1\ntimesignature 1 at 6 upper 3 lower 4\n"
                "barline 1 at 0 spans 1\nnote 1 at 10\nbarline 1 at 50\nnote 1 at 60\nbarline 1 at 99\n"
                "staff 2 at 0 lines 1 instrument 3\nbarline 2 at 0 spans 2\nnote 2 at 9\nbarline 2 at 40\n"
                "staff 3 at 0 instrument 4\nnote 3 at 8\n"));
  return bytes;
}

/// Consistency by its definition: no two systems whose lists differ.
bool isConsistent(const SystemTable& table) {
  std::set<std::vector<std::int16_t>> lists;
  for (const SystemTable::System& system : table.systems) {
    lists.insert(table.lists.elements(system.systemInstrList));
  }
  return lists.size() <= 1;
}

void checkVerdict(FuzzHost& host) {
  SystemTable systems;
  if (!exitCodeOf(host.user, [&] { phase5(host.files, 1, systems); })) {
    const std::string expected = isConsistent(systems) ? "CONSISTENCY=YES\r\n" : "CONSISTENCY=NO\r\n";
    expect(*host.files.find(verdictFile) == expected + "MULTIFILE=YES\r\n", "the verdict is that of the systems");
    std::set<std::int16_t> numbers;
    for (const SystemTable::System& system : systems.systems) {
      expect(numbers.insert(system.systemNumber).second, "a system is in the table once");
    }
  } else {
    expect(host.files.find(verdictFile) == nullptr, "a report that cannot be read has no verdict");
  }
}

/// Every distinct text is counted once, and comments not at all.
void checkCount(FuzzHost& host, std::string_view report) {
  constexpr std::string_view key = ",INSTRID=";
  std::set<std::string, std::less<>> identifiers;
  forEachLine(report, [&](std::string_view line) {
    const std::size_t at = line.find(key);
    if (!line.starts_with('*') && at != std::string_view::npos) {
      identifiers.emplace(
          line.substr(at + key.size(), std::min(line.find(',', at + 1), line.size()) - at - key.size()));
    }
  });
  std::int16_t count = 0;
  const bool ended = exitCodeOf(host.user, [&] { count = numberOfInstruments(host.files); }).has_value();
  expect(ended ? identifiers.size() > static_cast<std::size_t>(std::numeric_limits<std::int16_t>::max())
               : static_cast<std::size_t>(count) == identifiers.size(),
         "instruments are counted");
}

void checkIndex(FuzzHost& host) {
  ReportIndex index;
  if (exitCodeOf(host.user, [&] { index = readReport(host.files); })) {
    return;
  }
  const std::set<std::int16_t> distinct(index.instruments.begin(), index.instruments.end());
  expect(distinct.size() == index.instruments.size(), "an instrument has one place in the order");
  for (int system = 1; system <= index.systemCount(); ++system) {
    std::vector<StaffRecord> staves;
    if (!exitCodeOf(host.user, [&] { staves = stavesOf(index, static_cast<std::int16_t>(system)); })) {
      expect(!staves.empty(), "a system has staves");
    }
    for (const StaffRecord& staff : staves) {
      expect(index.lastUseOf(staff.file) >= system, "a file is kept for as long as it is needed");
    }
  }
}

void run(std::string_view report) {
  FreshProgram fresh;
  fresh.files.addFile(reportFile, std::string(report));
  checkVerdict(fresh);
  checkCount(fresh, report);
  checkIndex(fresh);
  fresh.files.addFile("C:\\M\\X1.MUS", page());
  fresh.program.panel.txtFirstResultFile.text = "C:\\OUT\\WORK0001.MUS";
  reference::Tables tables;
  const bool converted = !convertBesideReference(fresh, tables);
  const auto index = converted ? readReport(fresh.files) : ReportIndex();
  expect(!converted || fresh.user.lastText().starts_with("Created " + std::to_string(index.systemCount()) + " files."),
         "a conversion reports the number of files");
  expect(*fresh.files.find(reportFile) == report && *fresh.files.find("C:\\M\\X1.MUS") == page(),
         "inputs are not touched");
}

}  // namespace
}  // namespace kiv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  kiv::fuzz::run(kiv::fuzz::textOf(data, size));
  return 0;
}
