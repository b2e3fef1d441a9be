#include "diagnostics/system_facts.h"

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

void SystemFacts::add(std::int16_t system, StaffFact staff) {
  if (files_.empty() || staff.file != lastFileName_) {  // the staves of a file mostly follow each other
    lastFile_ = files_.try_emplace(staff.file, files_.size()).first->second;
    lastFileName_ = staff.file;
  }
  staff.occurrence = ++occurrences_[staff.instrumentText + "," + staff.staff + "," + std::to_string(lastFile_)];
  const auto [index, isNew] = indices_.emplace(system, systems_.size());
  if (isNew) {
    // Mostly as many as in the system before: growing step by step would leave half as much again unused.
    const std::size_t expected = systems_.empty() ? 0 : systems_.back().staves.size();
    systems_.push_back({system, {}});
    systems_.back().staves.reserve(expected);
  }
  systems_[index->second].staves.push_back(std::move(staff));
}

std::vector<SystemFact> readSystemFacts(Files& files) {
  auto file = files.openInput(reportFile);
  if (!file) {
    return {};
  }
  SystemFacts systems;
  LineReader lines(std::move(file));
  while (const auto line = lines.next()) {
    const ReportRecord record(*line);
    const auto system = line->starts_with('*') ? std::nullopt : record.wholeOrNone(ReportRecord::system);
    const auto instrument = system ? record.wholeOrNone(ReportRecord::instrument) : std::nullopt;
    if (!instrument) {
      continue;
    }
    systems.add(*system, staffOf(record, *instrument));
  }
  return lines.failed() ? std::vector<SystemFact>() : std::move(systems).systems();
}

}  // namespace kiv
