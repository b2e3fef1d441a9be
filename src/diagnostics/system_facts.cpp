#include "diagnostics/system_facts.h"

#include <optional>
#include <string_view>
#include <unordered_map>

#include "analysis/report.h"
#include "base/number.h"
#include "platform/line_reader.h"

namespace kiv {
namespace {

std::optional<std::int16_t> wholeElt(std::string_view line, std::string_view key) {
  const auto number = strictNumber(getElt(line, key));
  return number ? toInt16(*number) : std::nullopt;
}

/// The file stands last in its record, so that a comma in its name belongs to it.
std::string_view fileIn(std::string_view line) {
  constexpr std::string_view key = ",FILE=";
  const std::size_t at = line.find(key);
  return at == std::string_view::npos ? "" : line.substr(at + key.size());
}

}  // namespace

std::vector<SystemFact> readSystemFacts(Host& host) {
  std::vector<SystemFact> systems;
  auto file = host.openInput(reportFile);
  if (!file) {
    return systems;
  }
  std::unordered_map<std::int16_t, std::size_t> places;
  std::unordered_map<std::string, int> met;
  LineReader lines(std::move(file));
  while (const auto line = lines.next()) {
    const auto system = line->starts_with('*') ? std::nullopt : wholeElt(*line, "SYSTEM");
    const auto instrument = system ? wholeElt(*line, ",INSTRID") : std::nullopt;
    if (!instrument) {
      continue;
    }
    StaffFact staff{*instrument, std::string(getElt(*line, ",INSTRID")), std::string(getElt(*line, ",NEWSTAFF")),
                    std::string(getElt(*line, ",STAFF")), std::string(fileIn(*line))};
    staff.occurrence = ++met[staff.instrumentText + "," + staff.staff + "," + staff.file];
    const auto [place, isNew] = places.emplace(*system, systems.size());
    if (isNew) {
      systems.push_back({*system, {}});
    }
    systems[place->second].staves.push_back(std::move(staff));
  }
  return lines.failed() ? std::vector<SystemFact>() : systems;
}

}  // namespace kiv
