#include "verify/report_records.h"

#include <algorithm>
#include <numeric>
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

void Records::addLine(std::string_view line) {
  ++lines_;
  if (line.starts_with('*')) {
    return;
  }
  if (auto known = recordIn(line)) {
    auto& [record, name] = *known;
    const bool isSameFile = !staves_.empty() && fileOf(staves_.back()) == name;
    record.file = isSameFile ? staves_.back().file : indexOf(name);
    staves_.push_back(record);
  } else {
    errors_.push_back("line " + std::to_string(lines_) + " is no record of a staff");
  }
}

std::uint16_t Records::indexOf(std::string_view file) {
  if (const auto input = inputs_.find(file)) {
    return static_cast<std::uint16_t>(*input);
  }
  const auto next = static_cast<std::uint16_t>(inputs_.size() + otherNames_.size());
  const auto [other, isNew] = others_.emplace(file, next);
  if (isNew) {
    otherNames_.emplace_back(file);
  }
  return other->second;
}

const std::string& Records::fileOf(const Record& record) const {
  return isOfInput(record) ? inputs_.name(record.file) : otherNames_[record.file - inputs_.size()];
}

void Records::sortBySystem() {
  const auto isBefore = [](const Record& a, const Record& b) { return a.system < b.system; };
  if (!std::is_sorted(staves_.begin(), staves_.end(), isBefore)) {
    std::stable_sort(staves_.begin(), staves_.end(), isBefore);
  }
}

std::vector<std::size_t> Records::repeated() const {
  std::vector<std::uint32_t> order(staves_.size());
  std::iota(order.begin(), order.end(), 0U);
  const auto staffAt = [&](std::uint32_t i) { return std::pair(staves_[i].file, staves_[i].staff); };
  std::sort(order.begin(), order.end(),
            [&](std::uint32_t a, std::uint32_t b) { return std::pair(staffAt(a), a) < std::pair(staffAt(b), b); });
  std::vector<std::size_t> repeated;
  for (std::size_t i = 1; i < order.size(); ++i) {
    if (staffAt(order[i - 1]) == staffAt(order[i])) {
      repeated.push_back(order[i]);
    }
  }
  std::sort(repeated.begin(), repeated.end());
  return repeated;
}

}  // namespace kiv::proof
