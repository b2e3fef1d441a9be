#include "verify/records_by_system.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

#include "verify/found_texts.h"

namespace kiv::proof {
namespace {

/// The findings on single staves.
std::vector<Finding> findingsOnStaves(const Records& records) {
  const std::vector<std::size_t> repeated = records.repeated();
  auto next = repeated.begin();
  std::vector<Finding> findings;
  for (std::size_t i = 0; i < records.staves().size(); ++i) {
    const Record& record = records.staves()[i];
    const std::string& file = records.fileOf(record);
    if (!records.isOfInput(record)) {
      findings.push_back({file, 0, "cannot be read, and has a staff of system " + std::to_string(record.system)});
    }
    if (next != repeated.end() && *next == i) {
      std::string what = "lists staff " + std::to_string(record.staff);
      what.append(" of ").append(file).append(" more than once");
      findings.push_back({reportName, 0, std::move(what)});
      ++next;
    }
  }
  return findings;
}

}  // namespace

RecordsBySystem groupBySystem(Records& records) {
  RecordsBySystem grouped;
  grouped.findings = findingsOnStaves(records);
  records.sortBySystem();
  std::span<const Record> left = records.staves();
  while (!left.empty()) {
    const int number = left.front().system;
    const auto end = std::find_if(left.begin(), left.end(), [&](const Record& one) { return one.system != number; });
    const auto system = left.first(static_cast<std::size_t>(end - left.begin()));
    if (number == static_cast<int>(grouped.systems.size()) + 1) {
      grouped.systems.push_back(system);
    } else {
      const std::string name = "a system " + std::to_string(number);
      grouped.findings.push_back({reportName, 0, "has " + name + ", which no conversion reaches"});
    }
    left = left.subspan(system.size());
  }
  return grouped;
}

}  // namespace kiv::proof
