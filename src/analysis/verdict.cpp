#include "analysis/verdict.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "analysis/report.h"
#include "analysis/systems_of_report.h"
#include "base/number.h"
#include "messages/analysis_messages.h"
#include "messages/run_time_errors.h"
#include "platform/text_records.h"

namespace kiv {
namespace {

void readSystems(LineReader report, SystemTable& table) {
  SystemsReader reader(table);
  forEachRecord(std::move(report), reportFile, [&](std::string_view line) { reader.add(line); });
  reader.finish();
}

}  // namespace

bool SystemTable::isConsistent() const {
  return std::all_of(systems.begin(), systems.end(),
                     [&](const System& system) { return system.systemInstrList == systems.front().systemInstrList; });
}

void phase5(Files& files, std::int16_t multifileCount, SystemTable& table) {
  LineReader report = openLines(files, reportFile, messages::reportNotReadForVerdict());
  readSystems(std::move(report), table);
  const auto verdict = files.openOutput(verdictFile);
  if (!verdict) {
    endProgram(messages::verdictNotCreated());
  }
  const std::string lines = std::string(table.isConsistent() ? "CONSISTENCY=YES\r\n" : "CONSISTENCY=NO\r\n") +
                            (multifileCount != 0 ? "MULTIFILE=YES\r\n" : "MULTIFILE=NO\r\n");
  if (const auto failure = verdict->write(lines)) {
    endProgram(messages::platformFailure(*failure, verdictFile));
  }
}

std::int16_t numberOfInstruments(Files& files) {
  const std::string report = "KivSystem2.txt";  // the report, in the spelling of this procedure's messages
  Identifiers identifiers;
  forEachRecord(openLines(files, report, messages::reportNotReadForCount()), report,
                [&](std::string_view line) { identifiers.add(line); });
  const auto whole = toInt16(static_cast<double>(identifiers.count()));
  if (!whole) {
    endProgram(messages::overflowIn(reportFile));
  }
  return *whole;
}

Verdict readVerdict(Files& files) {
  LineReader lines = openLines(files, verdictFile, messages::verdictNotRead());
  Verdict verdict;
  verdict.consistency = lines.next().value_or("");
  verdict.multifile = lines.next().value_or("");
  requireNoReadFailure(lines, verdictFile);
  return verdict;
}

}  // namespace kiv
