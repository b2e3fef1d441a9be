#include "fuzz/support/report_view.h"

#include "analysis/report_record.h"
#include "base/number.h"

namespace kiv::fuzz {
namespace {

std::int16_t whole(std::string_view line, std::string_view key) {
  return toInt16(numericValue(getElt(line, key))).value_or(0);
}

}  // namespace

std::vector<Record> recordsOf(std::string_view report) {
  std::vector<Record> records;
  while (!report.empty()) {
    const std::size_t end = report.find("\r\n");
    const std::string_view line = report.substr(0, end);
    report.remove_prefix(end == std::string_view::npos ? report.size() : end + 2);
    if (line.starts_with("SYSTEM=")) {
      records.push_back({numericValue(getElt(line, "SYSTEM")), std::string(getElt(line, ",INSTRID")),
                         whole(line, ",INSTRID"), whole(line, ",STAFF"), whole(line, ",NEWSTAFF"),
                         std::string(getElt(line, ",FILE"))});
    }
  }
  return records;
}

std::vector<std::vector<Record>> systemsOf(const std::vector<Record>& records) {
  std::vector<std::vector<Record>> systems;
  while (true) {
    std::vector<Record> system;
    for (const Record& record : records) {
      if (record.system == static_cast<double>(systems.size() + 1)) {
        system.push_back(record);
      }
    }
    if (system.empty()) {
      return systems;
    }
    systems.push_back(std::move(system));
  }
}

}  // namespace kiv::fuzz
