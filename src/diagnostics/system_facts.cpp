#include "diagnostics/system_facts.h"

#include <algorithm>
#include <optional>
#include <string>
#include <unordered_set>
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

/// Calls visit with the system and the instrument of every record, and the record. False after an I/O error.
template <typename Visit>
bool forEachStaff(Files& files, const Visit& visit) {
  auto file = files.openInput(reportFile);
  if (!file) {
    return true;
  }
  LineReader lines(std::move(file));
  while (const auto line = lines.next()) {
    const ReportRecord record(*line);
    const auto system = line->starts_with('*') ? std::nullopt : record.wholeOrNone(ReportRecord::system);
    const auto instrument = system ? record.wholeOrNone(ReportRecord::instrument) : std::nullopt;
    if (instrument) {
      visit(*system, *instrument, record);
    }
  }
  return !lines.failed();
}

/// Whether equal values that are added always follow each other.
template <typename Value>
class Runs {
 public:
  template <typename View>
  void add(const View& value) {
    if (!last_ || *last_ != value) {
      last_ = Value(value);
      areWhole_ = known_.insert(*last_).second && areWhole_;
    }
  }
  bool areWhole() const { return areWhole_; }

 private:
  std::unordered_set<Value> known_;
  std::optional<Value> last_;
  bool areWhole_ = true;
};

/// Whether the staves of each system and those of each file follow each other, whatever else their records say.
bool areTogether(Files& files) {
  auto file = files.openInput(reportFile);
  if (!file) {
    return true;
  }
  Runs<std::int16_t> systems;
  Runs<std::string> pages;
  LineReader lines(std::move(file));
  while (const auto line = lines.next()) {
    const ReportRecord record(*line);
    if (const auto system = line->starts_with('*') ? std::nullopt : record.wholeOrNone(ReportRecord::system)) {
      systems.add(*system);
      pages.add(record.fileToEnd());
    }
  }
  return systems.areWhole() && pages.areWhole();
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

std::vector<SystemFact> SystemFacts::takeSystems() {
  indices_.clear();
  return std::exchange(systems_, {});
}

std::vector<SystemFact> readSystemFacts(Files& files) {
  SystemFacts systems;
  const bool isRead =
      forEachStaff(files, [&](std::int16_t system, std::int16_t instrument, const ReportRecord& record) {
        systems.add(system, staffOf(record, instrument));
      });
  return isRead ? std::move(systems).systems() : std::vector<SystemFact>();
}

bool forEachSystemFact(Files& files, const SystemFactVisitor& visit) {
  const bool together = areTogether(files);
  SystemFacts facts;
  std::optional<std::int16_t> last;
  std::string lastFile;
  const auto visitAll = [&] {
    const std::vector<SystemFact> systems = facts.takeSystems();
    std::for_each(systems.begin(), systems.end(), visit);
  };
  const bool isRead =
      forEachStaff(files, [&](std::int16_t system, std::int16_t instrument, const ReportRecord& record) {
        if (together && last && *last != system) {
          visitAll();
        }
        if (together && record.fileToEnd() != lastFile) {
          facts.forgetFiles();
          lastFile = record.fileToEnd();
        }
        facts.add(system, staffOf(record, instrument));
        last = system;
      });
  visitAll();
  return isRead;
}

}  // namespace kiv
