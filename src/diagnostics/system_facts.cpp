#include "diagnostics/system_facts.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <unordered_map>
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

/// Calls visit with the system of every record that has one, and the record. False after an I/O error.
template <typename Visit>
bool forEachSystemRecord(Files& files, const Visit& visit) {
  auto file = files.openInput(reportFile);
  if (!file) {
    return true;
  }
  LineReader lines(std::move(file));
  while (const auto line = lines.next()) {
    const ReportRecord record(*line);
    if (const auto system = line->starts_with('*') ? std::nullopt : record.wholeOrNone(ReportRecord::system)) {
      visit(*system, record);
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
  Runs<std::int16_t> systems;
  Runs<std::string> pages;
  forEachSystemRecord(files, [&](std::int16_t system, const ReportRecord& record) {
    systems.add(system);
    pages.add(record.fileToEnd());
  });
  return systems.areWhole() && pages.areWhole();
}

/// Puts listed staves together to systems.
class SystemFacts {
 public:
  /// Adds a staff to a system, after those that were added before. Its occurrence is filled in.
  void add(std::int16_t system, StaffFact staff);
  /// The systems so far in the order in which they first appeared; no staff of them will be added any more.
  std::vector<SystemFact> takeSystems();
  /// Forgets the files so far, of which no staff will be added any more.
  void forgetFiles();

 private:
  std::vector<SystemFact> systems_;
  std::unordered_map<std::int16_t, std::size_t> indices_;  // by the number of the system
  std::unordered_map<std::string, std::size_t> files_;     // their numbers
  std::size_t lastFile_ = 0;
  std::string lastFileName_;
  std::unordered_map<std::string, int> occurrences_;  // of each staff, by its texts and the number of its file
};

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

void SystemFacts::forgetFiles() {
  files_.clear();
  occurrences_.clear();
}

}  // namespace

std::set<std::string> filesOf(const SystemFact& system) {
  std::set<std::string> files;
  for (const StaffFact& staff : system.staves) {
    files.insert(staff.file);
  }
  return files;
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
  const bool isRead = forEachSystemRecord(files, [&](std::int16_t system, const ReportRecord& record) {
    const auto instrument = record.wholeOrNone(ReportRecord::instrument);
    if (!instrument) {
      return;
    }
    if (together && last && *last != system) {
      visitAll();
    }
    if (together && record.fileToEnd() != lastFile) {
      facts.forgetFiles();
      lastFile = record.fileToEnd();
    }
    facts.add(system, staffOf(record, *instrument));
    last = system;
  });
  visitAll();
  return isRead;
}

}  // namespace kiv
