#include "conversion/report_index.h"

#include <string_view>
#include <unordered_set>

#include "analysis/report.h"
#include "analysis/report_lines.h"
#include "base/number.h"

namespace kiv {
namespace {

constexpr std::string_view systemKey = "SYSTEM";

std::int16_t wholeElt(Host& host, std::string_view line, std::string_view key) {
  const auto whole = toInt16(numericValue(getElt(line, key)));
  if (!whole) {
    host.runTimeError(RunTimeError::overflow, line);
  }
  return *whole;
}

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

ReportIndex readReport(Host& host) {
  ReportIndex report;
  std::unordered_set<std::int16_t> known;
  LineReader lines = openLines(host, reportFile, "Failed to open file KivSystem2.TXT");
  forEachRecord(host, std::move(lines), reportFile, [&](std::string_view line) {
    if (line.find("SYSTEM=") == std::string_view::npos) {
      return;
    }
    const std::int16_t instrument = wholeElt(host, line, "INSTRID");
    if (known.insert(instrument).second) {
      report.instruments.push_back(instrument);
    }
    const double system = numericValue(getElt(line, systemKey));
    report.systems[system].emplace_back(line);
    raise(report.lastUse, getElt(line, ",FILE"), system);
  });
  return report;
}

std::vector<StaffRecord> stavesOf(Host& host, const ReportIndex& report, std::int16_t system) {
  std::vector<StaffRecord> staves;
  const auto lines = report.systems.find(system);
  if (lines == report.systems.end()) {
    return staves;
  }
  for (const std::string& line : lines->second) {
    StaffRecord staff;
    staff.instrId = wholeElt(host, line, ",INSTRID");
    staff.stavesUp = wholeElt(host, line, ",STAVESUP");
    staff.staff = wholeElt(host, line, ",STAFF");
    staff.file = getElt(line, ",FILE");
    staff.newStaff = wholeElt(host, line, ",NEWSTAFF");
    staves.push_back(std::move(staff));
  }
  return staves;
}

}  // namespace kiv
