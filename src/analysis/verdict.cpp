#include "analysis/verdict.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "analysis/report.h"
#include "analysis/report_lines.h"
#include "mus/number.h"

namespace kiv {
namespace {

/// The whole number behind a keyword of the line, 0 for a line without the keyword.
std::int16_t wholeNumber(Host& host, std::string_view line, std::string_view keyword) {
  const auto value = findElt(line, keyword);
  if (!value) {
    return 0;
  }
  const auto number = strictNumber(*value);
  if (!number) {
    host.runTimeError(RunTimeError::typeMismatch, line);
  }
  const auto whole = toInt16(*number);
  if (!whole) {
    host.runTimeError(RunTimeError::overflow, line);
  }
  return *whole;
}

void readSystems(Host& host, LineReader report, SystemTable& table) {
  std::unordered_map<std::int16_t, std::size_t> known;
  forEachRecord(host, std::move(report), reportFile, [&](std::string_view line) {
    const std::int16_t system = wholeNumber(host, line, "SYSTEM");
    const std::int16_t identifier = wholeNumber(host, line, "INSTRID");
    const auto [place, isNew] = known.emplace(system, table.systems.size());
    if (isNew) {
      table.systems.push_back({system, ""});
    }
    table.systems[place->second].systemInstrList += std::to_string(identifier) + ",";
  });
}

}  // namespace

bool SystemTable::isConsistent() const {
  return std::all_of(systems.begin(), systems.end(),
                     [&](const System& system) { return system.systemInstrList == systems.front().systemInstrList; });
}

void phase5(Host& host, std::int16_t multifileCount, SystemTable& table) {
  LineReader report = openLines(host, reportFile, "Could not open file KivSystem2.TXT for input.");
  table.systems.clear();
  readSystems(host, std::move(report), table);
  const auto verdict = host.openOutput(verdictFile);
  if (!verdict) {
    host.fatal("Failed to create file KivSystem1.TXT");
  }
  const std::string lines = std::string(table.isConsistent() ? "CONSISTENCY=YES\r\n" : "CONSISTENCY=NO\r\n") +
                            (multifileCount != 0 ? "MULTIFILE=YES\r\n" : "MULTIFILE=NO\r\n");
  if (const auto failure = verdict->write(lines)) {
    host.runTimeError(*failure, verdictFile);
  }
}

std::optional<std::size_t> countInstruments(Host& host, const std::string& report) {
  auto file = host.openInput(report);
  if (!file) {
    return std::nullopt;
  }
  std::set<std::string, std::less<>> identifiers;
  forEachRecord(host, LineReader(std::move(file)), report, [&](std::string_view line) {
    const auto identifier = findElt(line, ",INSTRID");
    if (identifier && !identifiers.contains(*identifier)) {
      identifiers.emplace(*identifier);
    }
  });
  return identifiers.size();
}

std::int16_t numberOfInstruments(Host& host) {
  const auto count = countInstruments(host, "KivSystem2.txt");
  if (!count) {
    host.fatal("Failed to open KivSystem2.txt for input.");
  }
  const auto whole = toInt16(static_cast<double>(*count));
  if (!whole) {
    host.runTimeError(RunTimeError::overflow, reportFile);
  }
  return *whole;
}

std::array<std::string, 2> readVerdict(Host& host) {
  LineReader verdict = openLines(host, verdictFile, "Failed to open KivSystem1.TXT for input.");
  std::array<std::string, 2> lines;
  for (std::string& line : lines) {
    line = verdict.next().value_or("");
  }
  checkMedium(host, verdict, verdictFile);
  return lines;
}

}  // namespace kiv
