#include "verify/report_records.h"

#include <optional>
#include <utility>

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

void RecordReader::addLine(std::string_view line) {
  ++lines_;
  if (line.starts_with('*')) {
    return;
  }
  if (auto known = recordIn(line)) {
    auto& [record, name] = *known;
    const bool isSameFile = !records_.staves.empty() && *records_.staves.back().file == name;
    record.file = isSameFile ? records_.staves.back().file : &*records_.files.emplace(name).first;
    records_.staves.push_back(record);
  } else {
    records_.errors.push_back("line " + std::to_string(lines_) + " is no record of a staff");
  }
}

}  // namespace kiv::proof
