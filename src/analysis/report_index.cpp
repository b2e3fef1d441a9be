#include "analysis/report_index.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <string_view>

#include "analysis/report.h"
#include "analysis/report_record.h"
#include "base/number.h"
#include "base/number_hash.h"
#include "messages/analysis_messages.h"
#include "platform/text_records.h"

namespace kiv {
namespace {

/// Notes that a system uses a file. Returns the file's number.
std::uint32_t raise(ReportIndex& report, std::string_view file, double system) {
  const std::uint32_t number = report.files.add(file);
  if (number == report.lastUse.size()) {
    report.lastUse.push_back(system);
  }
  report.lastUse[number] = std::max(report.lastUse[number], system);
  return number;
}

std::size_t hashOf(double number) {
  return std::hash<double>()(number);
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
  return ReportIndex::Record{0, 0, *instrId, *stavesUp, *staff, *newStaff};
}

void addRecord(const ReportRecord& record, ReportIndex& report) {
  const double number = numericValue(record.text(ReportRecord::system));
  const auto numbers = numbersIn(record);
  if (!numbers) {
    report.unfitLines.emplace_back(record.line());
  }
  ReportIndex::Record entry = numbers.value_or(ReportIndex::Record());
  entry.unfitLine = numbers ? 0 : static_cast<std::uint32_t>(report.unfitLines.size());
  const std::uint32_t file = raise(report, record.file(), number);
  ReportIndex::System& system = report.system(number);
  if (system.records == ReportIndex::Lists::emptyList) {
    system.file = file;
  }
  entry.fileStep = file - system.file;
  system.records = report.lists.append(system.records, entry);
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

std::size_t ReportIndex::RecordHash::operator()(const Record& record) const {
  NumberHash hash;
  hash.add(record.unfitLine).add(record.fileStep).add(record.instrId).add(record.stavesUp);
  return hash.add(record.staff).add(record.newStaff).value();
}

const ReportIndex::System* ReportIndex::find(double number) const {
  const auto known = systemIndex.find(hashOf(number), [&](std::uint32_t s) { return systems[s].number == number; });
  return known ? &systems[*known] : nullptr;
}

ReportIndex::System& ReportIndex::system(double number) {
  if (!systems.empty() && systems.back().number == number) {  // staves of one system mostly follow
    return systems.back();
  }
  return systems[systemIndex.findOrAdd(
      hashOf(number), [&](std::uint32_t s) { return systems[s].number == number; },
      [this](std::uint32_t s) { return hashOf(systems[s].number); }, [&] { systems.push_back({number}); })];
}

int ReportIndex::systemCount() const {
  int count = 0;
  while (find(count + 1) != nullptr) {
    ++count;
  }
  return count;
}

void IndexReader::add(std::string_view record) {
  const ReportRecord fields(record);
  if (!fields.namesSystem()) {
    return;
  }
  const std::int16_t instrument = fields.leadingWhole(ReportRecord::anyInstrument);
  if (known_.insert(instrument).second) {
    report_.instruments.push_back(instrument);
  }
  addRecord(fields, report_);
}

ReportIndex readReport(Files& files) {
  ReportIndex report;
  IndexReader reader(report);
  LineReader lines = openLines(files, reportFile, messages::reportNotReadForConversion());
  forEachRecord(std::move(lines), reportFile, [&](std::string_view line) { reader.add(line); });
  return report;
}

std::vector<StaffRecord> stavesOf(const ReportIndex& report, std::int16_t system) {
  std::vector<StaffRecord> staves;
  const ReportIndex::System* found = report.find(system);
  if (found == nullptr) {
    return staves;
  }
  const std::vector<ReportIndex::Record> records = report.lists.elements(found->records);
  staves.reserve(records.size());
  for (const ReportIndex::Record& record : records) {
    staves.push_back(record.unfitLine != 0
                         ? staffIn(ReportRecord(report.unfitLines[record.unfitLine - 1]))
                         : StaffRecord{record.instrId, record.stavesUp, record.staff,
                                       std::string(report.files[found->file + record.fileStep]), record.newStaff});
  }
  return staves;
}

}  // namespace kiv
