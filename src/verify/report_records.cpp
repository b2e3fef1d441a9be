#include "verify/report_records.h"

#include <optional>
#include <utility>

#include "verify/numbers.h"
#include "verify/text_lines.h"

namespace kiv::proof {
namespace {

/// The value after "KEY=" of a record, up to the next comma; nullopt without the key.
std::optional<std::string_view> fieldOf(std::string_view record, std::string_view key) {
  const std::size_t at = record.find(key);
  if (at == std::string_view::npos) {
    return std::nullopt;
  }
  const std::string_view value = record.substr(at + key.size());
  return value.substr(0, value.find(','));
}

bool readNumber(std::string_view record, std::string_view key, std::int16_t& number) {
  const auto field = fieldOf(record, key);
  const auto whole = field ? wholeIn(*field) : std::nullopt;
  number = whole.value_or(0);
  return whole.has_value();
}

/// The record of a line and the name of its file.
std::optional<std::pair<Record, std::string_view>> recordIn(std::string_view line) {
  Record record;
  const auto file = fieldOf(line, ",FILE=");
  if (!file || file->empty() || !readNumber(line, "SYSTEM=", record.system) ||
      !readNumber(line, ",INSTRID=", record.instrument) || !readNumber(line, ",NEWSTAFF=", record.newStaff) ||
      !readNumber(line, ",STAFF=", record.staff)) {
    return std::nullopt;
  }
  return std::pair(record, *file);
}

}  // namespace

Records readRecords(std::string_view report) {
  Records records;
  int number = 0;
  for (const std::string_view line : linesOf(report)) {
    ++number;
    if (line.starts_with('*')) {
      continue;
    }
    if (auto known = recordIn(line)) {
      auto& [record, name] = *known;
      const bool isSameFile = !records.staves.empty() && *records.staves.back().file == name;
      record.file = isSameFile ? records.staves.back().file : &*records.files.emplace(name).first;
      records.staves.push_back(record);
    } else {
      records.errors.push_back("line " + std::to_string(number) + " is no record of a staff");
    }
  }
  return records;
}

}  // namespace kiv::proof
