#include "analysis/verdict.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "analysis/report.h"
#include "analysis/report_lines.h"
#include "base/number.h"

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

/// The different identifiers of the records taken, compared as texts.
class Identifiers {
 public:
  void take(std::string_view record) {
    const auto identifier = findElt(record, ",INSTRID");
    if (identifier && !texts_.contains(*identifier)) {
      texts_.emplace(*identifier);
    }
  }
  std::size_t count() const { return texts_.size(); }

 private:
  std::set<std::string, std::less<>> texts_;
};

void readSystems(Host& host, LineReader report, SystemTable& table) {
  table = {};
  Identifiers identifiers;
  std::unordered_map<std::int16_t, std::size_t> known;
  std::size_t place = 0;
  forEachRecord(host, std::move(report), reportFile, [&](std::string_view line) {
    const std::int16_t system = wholeNumber(host, line, "SYSTEM");
    const std::int16_t identifier = wholeNumber(host, line, "INSTRID");
    if (table.systems.empty() || table.systems[place].systemNumber != system) {  // staves of one system mostly follow
      place = known.try_emplace(system, table.systems.size()).first->second;
      if (place == table.systems.size()) {
        table.systems.push_back({system, ""});
      }
    }
    table.systems[place].systemInstrList.append(std::to_string(identifier)).append(",");
    identifiers.take(line);
  });
  table.instrumentCount = identifiers.count();
}

}  // namespace

bool SystemTable::isConsistent() const {
  return std::all_of(systems.begin(), systems.end(),
                     [&](const System& system) { return system.systemInstrList == systems.front().systemInstrList; });
}

void phase5(Host& host, std::int16_t multifileCount, SystemTable& table) {
  LineReader report = openLines(host, reportFile, "Could not open file KivSystem2.TXT for input.");
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

std::int16_t numberOfInstruments(Host& host) {
  const std::string report = "KivSystem2.txt";
  Identifiers identifiers;
  forEachRecord(host, openLines(host, report, "Failed to open KivSystem2.txt for input."), report,
                [&](std::string_view line) { identifiers.take(line); });
  const auto whole = toInt16(static_cast<double>(identifiers.count()));
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
