#include "tests/diagnostics/reported_systems.h"

#include <algorithm>
#include <map>
#include <string>
#include <tuple>
#include <utility>

#include "analysis/report.h"
#include "analysis/report_record.h"
#include "platform/line_reader.h"

namespace kiv::test {
namespace {

StaffFact staffOf(const ReportRecord& record, std::int16_t instrument) {
  return {instrument, std::string(record.text(ReportRecord::instrument)),
          std::string(record.text(ReportRecord::newStaff)), std::string(record.text(ReportRecord::staff)),
          std::string(record.fileToEnd())};
}

}  // namespace

std::vector<SystemFact> reportedSystems(Files& files) {
  std::vector<SystemFact> systems;
  std::map<std::tuple<std::string, std::string, std::string>, int> occurrences;
  auto report = files.openInput(reportFile);
  if (!report) {
    return systems;
  }
  LineReader lines(std::move(report));
  while (const auto line = lines.next()) {
    const ReportRecord record(*line);
    const auto number = line->starts_with('*') ? std::nullopt : record.wholeOrNone(ReportRecord::system);
    const auto instrument = number ? record.wholeOrNone(ReportRecord::instrument) : std::nullopt;
    if (!instrument) {
      continue;
    }
    StaffFact staff = staffOf(record, *instrument);
    staff.occurrence = ++occurrences[{staff.instrumentText, staff.staff, staff.file}];
    auto system = std::ranges::find(systems, *number, &SystemFact::number);
    if (system == systems.end()) {
      system = systems.insert(systems.end(), {*number, {}});
    }
    system->staves.push_back(std::move(staff));
  }
  return systems;
}

}  // namespace kiv::test
