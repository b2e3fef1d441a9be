#include "analysis/report_index.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <unordered_set>

#include "analysis/report.h"
#include "analysis/report_record.h"
#include "base/number.h"
#include "messages/analysis_messages.h"
#include "platform/text_records.h"

namespace kiv {
namespace {

/// Notes that a system uses a file. Returns the key.
const std::string* raise(std::map<std::string, double, std::less<>>& lastUse, std::string_view file, double system) {
  auto known = lastUse.find(file);
  if (known == lastUse.end()) {
    known = lastUse.emplace(file, system).first;
  }
  known->second = std::max(known->second, system);
  return &known->first;
}

/// The number that a field's text begins with; nullopt when 16 bits do not hold it.
std::optional<std::int16_t> wholeIn(const ReportRecord& record, std::string_view keyword) {
  return toInt16(numericValue(record.text(keyword)));
}

/// The record's numbers; nullopt when one of them does not fit.
std::optional<ReportIndex::Record> numbersIn(const ReportRecord& record) {
  const auto instrId = wholeIn(record, ReportRecord::instrument);
  const auto stavesUp = wholeIn(record, ReportRecord::stavesUp);
  const auto staff = wholeIn(record, ReportRecord::staff);
  const auto newStaff = wholeIn(record, ReportRecord::newStaff);
  if (!instrId || !stavesUp || !staff || !newStaff) {
    return std::nullopt;
  }
  return ReportIndex::Record{nullptr, 0, *instrId, *stavesUp, *staff, *newStaff};
}

void addRecord(const ReportRecord& record, ReportIndex& report) {
  const double system = numericValue(record.text(ReportRecord::system));
  const auto index = static_cast<std::uint32_t>(report.records.size());
  const auto numbers = numbersIn(record);
  if (!numbers) {
    report.unfitLines.emplace(index, record.line());
  }
  report.records.push_back(numbers.value_or(ReportIndex::Record()));
  report.records.back().file = raise(report.lastUse, record.file(), system);
  const auto [chain, isNew] = report.systems.try_emplace(system, ReportIndex::Chain{index, index});
  if (!isNew) {
    report.records[chain->second.last].next = index;
    chain->second.last = index;
  }
}

/// The staff of a record, whose numbers must fit.
StaffRecord staffIn(const ReportRecord& record) {
  StaffRecord staff;
  staff.instrId = record.leadingWhole(ReportRecord::instrument);
  staff.stavesUp = record.leadingWhole(ReportRecord::stavesUp);
  staff.staff = record.leadingWhole(ReportRecord::staff);
  staff.file = record.file();
  staff.newStaff = record.leadingWhole(ReportRecord::newStaff);
  return staff;
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
    addRecord(record, report);
  });
  return report;
}

std::vector<StaffRecord> stavesOf(const ReportIndex& report, std::int16_t system) {
  std::vector<StaffRecord> staves;
  const auto chain = report.systems.find(system);
  if (chain == report.systems.end()) {
    return staves;
  }
  std::uint32_t index = chain->second.first;
  do {
    const ReportIndex::Record& record = report.records[index];
    const auto unfit = report.unfitLines.find(index);
    staves.push_back(unfit != report.unfitLines.end()
                         ? staffIn(ReportRecord(unfit->second))
                         : StaffRecord{record.instrId, record.stavesUp, record.staff, *record.file, record.newStaff});
    index = record.next;
  } while (index != 0);
  return staves;
}

}  // namespace kiv
