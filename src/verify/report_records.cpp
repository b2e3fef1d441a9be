#include "verify/report_records.h"

#include <algorithm>
#include <optional>

#include "base/number.h"
#include "verify/numbers.h"

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
  const auto value = field ? strictNumber(*field) : std::nullopt;
  const auto whole = value ? roundedTo16Bits(*value) : std::nullopt;
  number = whole.value_or(0);
  return whole.has_value();
}

std::optional<Record> recordIn(std::string_view line) {
  Record record;
  const auto file = fieldOf(line, ",FILE=");
  if (!file || file->empty() || !readNumber(line, "SYSTEM=", record.system) ||
      !readNumber(line, ",INSTRID=", record.instrument) || !readNumber(line, ",NEWSTAFF=", record.newStaff) ||
      !readNumber(line, ",STAFF=", record.staff)) {
    return std::nullopt;
  }
  record.file = *file;
  return record;
}

}  // namespace

std::vector<std::string_view> linesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    lines.push_back(text.substr(0, end));
    text.remove_prefix(end);
    text.remove_prefix(text.starts_with("\r\n") ? 2 : std::min<std::size_t>(1, text.size()));
  }
  return lines;
}

Records readRecords(std::string_view report) {
  Records records;
  int number = 0;
  for (const std::string_view line : linesOf(report)) {
    ++number;
    if (line.starts_with('*')) {
      continue;
    }
    if (auto record = recordIn(line)) {
      record->line = number;
      records.staves.push_back(*record);
    } else {
      records.errors.push_back("line " + std::to_string(number) + " is no record of a staff");
    }
  }
  return records;
}

}  // namespace kiv::proof
