#include "analysis/report_record.h"

#include "base/number.h"
#include "messages/run_time_errors.h"

namespace kiv {

std::optional<std::string_view> findElt(std::string_view rec, std::string_view par) {
  std::size_t at = rec.find(par);
  while (at != std::string_view::npos && !rec.substr(at + par.size()).starts_with('=')) {
    at = rec.find(par, at + 1);
  }
  if (at == std::string_view::npos) {
    return std::nullopt;
  }
  const std::string_view value = rec.substr(at + par.size() + 1);
  return value.substr(0, value.find(','));
}

std::string_view getElt(std::string_view rec, std::string_view par) {
  return findElt(rec, par).value_or("");
}

std::string_view ReportRecord::fileToEnd() const {
  constexpr std::string_view key = ",FILE=";
  const std::size_t at = line_.find(key);
  return at == std::string_view::npos ? "" : line_.substr(at + key.size());
}

std::int16_t ReportRecord::leadingWhole(std::string_view keyword) const {
  const auto whole = toInt16(numericValue(text(keyword)));
  if (!whole) {
    endProgram(messages::overflowInRecord(line_, location()));
  }
  return *whole;
}

std::int16_t ReportRecord::strictWhole(std::string_view keyword) const {
  const auto value = findElt(line_, keyword);
  if (!value) {
    return 0;
  }
  const auto number = strictNumber(*value);
  if (!number) {
    endProgram(messages::typeMismatchInRecord(line_, location()));
  }
  const auto whole = toInt16(*number);
  if (!whole) {
    endProgram(messages::overflowInRecord(line_, location()));
  }
  return *whole;
}

std::optional<std::int16_t> ReportRecord::wholeOrNone(std::string_view keyword) const {
  const auto number = strictNumber(text(keyword));
  return number ? toInt16(*number) : std::nullopt;
}

Location ReportRecord::location() const {
  Location location;
  location.file = fileToEnd();
  location.staff = strictNumber(text(staff));
  location.instrument = strictNumber(text(instrument));
  location.system = wholeOrNone(system);
  return location;
}

}  // namespace kiv
