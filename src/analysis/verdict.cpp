#include "analysis/verdict.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <utility>

#include "analysis/report.h"
#include "analysis/report_record.h"
#include "base/hash_index.h"
#include "base/number.h"
#include "messages/analysis_messages.h"
#include "messages/run_time_errors.h"
#include "platform/text_records.h"

namespace kiv {
namespace {

/// The distinct identifiers of records, compared as texts.
class Identifiers {
 public:
  void add(std::string_view record) {
    const auto identifier = findElt(record, ReportRecord::instrument);
    if (identifier && !texts_.contains(*identifier)) {
      texts_.emplace(*identifier);
    }
  }
  std::size_t count() const { return texts_.size(); }

 private:
  std::set<std::string, std::less<>> texts_;
};

/// Finds the systems of a table by their numbers.
class SystemsByNumber {
 public:
  explicit SystemsByNumber(SystemTable& table) : systems_(table.systems) {}

  /// The system of the next record, which is added to the table when it is new.
  SystemTable::System& system(std::int16_t number) {
    if (systems_.empty() || systems_[latest_].systemNumber != number) {  // staves of one system mostly follow
      latest_ = indexOf(number);
    }
    return systems_[latest_];
  }

 private:
  static std::size_t hashOf(std::int16_t number) { return static_cast<std::uint16_t>(number); }
  std::size_t indexOf(std::int16_t number) {
    const auto known =
        index_.find(hashOf(number), [&](std::uint32_t system) { return systems_[system].systemNumber == number; });
    if (known) {
      return *known;
    }
    index_.add(hashOf(number), [this](std::uint32_t system) { return hashOf(systems_[system].systemNumber); });
    systems_.push_back({number});
    return systems_.size() - 1;
  }

  std::vector<SystemTable::System>& systems_;
  HashIndex index_;
  std::size_t latest_ = 0;
};

void readSystems(LineReader report, SystemTable& table) {
  table = {};
  Identifiers identifiers;
  SystemsByNumber systems(table);
  forEachRecord(std::move(report), reportFile, [&](std::string_view line) {
    const ReportRecord record(line);
    const std::int16_t number = record.strictWhole(ReportRecord::system);
    const std::int16_t identifier = record.strictWhole(ReportRecord::anyInstrument);
    SystemTable::System& system = systems.system(number);
    system.systemInstrList = table.lists.append(system.systemInstrList, identifier);
    identifiers.add(line);
  });
  table.instrumentCount = identifiers.count();
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
