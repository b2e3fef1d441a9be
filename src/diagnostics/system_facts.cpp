#include "diagnostics/system_facts.h"

#include <unordered_map>
#include <utility>

#include "analysis/report.h"
#include "analysis/report_record.h"
#include "platform/line_reader.h"

namespace kiv {
namespace {

StaffFact staffOf(const ReportRecord& record, std::int16_t instrument) {
  return {instrument, std::string(record.text(ReportRecord::instrument)),
          std::string(record.text(ReportRecord::newStaff)), std::string(record.text(ReportRecord::staff)),
          std::string(record.fileToEnd())};
}

}  // namespace

std::vector<SystemFact> readSystemFacts(Files& files) {
  std::vector<SystemFact> systems;
  auto file = files.openInput(reportFile);
  if (!file) {
    return systems;
  }
  std::unordered_map<std::int16_t, std::size_t> indices;
  std::unordered_map<std::string, int> occurrences;
  LineReader lines(std::move(file));
  while (const auto line = lines.next()) {
    const ReportRecord record(*line);
    const auto system = line->starts_with('*') ? std::nullopt : record.wholeOrNone(ReportRecord::system);
    const auto instrument = system ? record.wholeOrNone(ReportRecord::instrument) : std::nullopt;
    if (!instrument) {
      continue;
    }
    StaffFact staff = staffOf(record, *instrument);
    staff.occurrence = ++occurrences[staff.instrumentText + "," + staff.staff + "," + staff.file];
    const auto [index, isNew] = indices.emplace(*system, systems.size());
    if (isNew) {
      systems.push_back({*system, {}});
    }
    systems[index->second].staves.push_back(std::move(staff));
  }
  return lines.failed() ? std::vector<SystemFact>() : systems;
}

}  // namespace kiv
