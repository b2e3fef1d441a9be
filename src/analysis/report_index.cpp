#include "analysis/report_index.h"

#include <string_view>
#include <unordered_set>

#include "analysis/report.h"
#include "analysis/report_record.h"
#include "base/number.h"
#include "messages/analysis_messages.h"
#include "platform/text_records.h"

namespace kiv {
namespace {

void raise(std::map<std::string, double, std::less<>>& lastUse, std::string_view file, double system) {
  const auto known = lastUse.find(file);
  if (known == lastUse.end()) {
    lastUse.emplace(file, system);
  } else if (known->second < system) {
    known->second = system;
  }
}

}  // namespace

int ReportIndex::systemCount() const {
  int count = 0;
  while (systems.contains(count + 1)) {
    ++count;
  }
  return count;
}

ReportIndex readReport(Files& files) {
  ReportIndex report;
  std::unordered_set<std::int16_t> known;
  LineReader lines = openLines(files, reportFile, messages::reportNotReadForConversion());
  forEachRecord(std::move(lines), reportFile, [&](std::string_view line) {
    const ReportRecord record(line);
    if (!record.namesSystem()) {
      return;
    }
    const std::int16_t instrument = record.leadingWhole(ReportRecord::anyInstrument);
    if (known.insert(instrument).second) {
      report.instruments.push_back(instrument);
    }
    const double system = numericValue(record.text(ReportRecord::system));
    report.systems[system].emplace_back(line);
    raise(report.lastUse, record.file(), system);
  });
  return report;
}

std::vector<StaffRecord> stavesOf(const ReportIndex& report, std::int16_t system) {
  std::vector<StaffRecord> staves;
  const auto lines = report.systems.find(system);
  if (lines == report.systems.end()) {
    return staves;
  }
  for (const std::string& line : lines->second) {
    const ReportRecord record(line);
    StaffRecord staff;
    staff.instrId = record.leadingWhole(ReportRecord::instrument);
    staff.stavesUp = record.leadingWhole(ReportRecord::stavesUp);
    staff.staff = record.leadingWhole(ReportRecord::staff);
    staff.file = record.file();
    staff.newStaff = record.leadingWhole(ReportRecord::newStaff);
    staves.push_back(std::move(staff));
  }
  return staves;
}

}  // namespace kiv
