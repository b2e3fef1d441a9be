#include "verify/verify.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <map>
#include <set>
#include <unordered_map>
#include <utility>

#include "base/sha256.h"
#include "verify/compare_items.h"
#include "verify/compare_layout.h"
#include "verify/expected_pages.h"
#include "verify/found_texts.h"
#include "verify/group_pages.h"
#include "verify/input_pages.h"
#include "verify/other_results.h"
#include "verify/report_records.h"
#include "verify/result_names.h"
#include "verify/selected_files.h"
#include "verify/system_proof.h"
#include "verify/text_lines.h"

namespace kiv::proof {
namespace {

class Verifier {
 public:
  Verifier(Files& files, Machine& machine, const ConversionToProve& conversion, const Progress& progress)
      : files_(files),
        machine_(machine),
        conversion_(conversion),
        progress_(progress),
        group_(files, machine, progress),
        inputPages_([this](const std::string& name) { return group_.load(name); }) {}

  Verification run(const std::string& namesFile);

 private:
  void report(const std::string& file, const std::string& what) { verification_.findings.push_back({file, 0, what}); }
  void report(const std::vector<Finding>& findings);
  void digest(const std::string& name, std::string_view bytes);
  void addInputs();
  std::optional<Finding> derive(const std::string& namesFile, FoundTexts& texts);
  void groupRecords();
  bool readResults();
  bool numbersAreShown();
  bool proveOneByOne(const ReportedSystems& reported, bool showNumbers);
  void deriveExpected(const ReportedSystems& reported, bool showNumbers);
  void countLeftOut();
  void proveResults();
  void compare();
  void reportSurplus(const StrayResults& stray);
  void showChecked(std::size_t done) { progress_(done, resultNames_.size(), "results checked"); }

  Files& files_;
  Machine& machine_;
  const ConversionToProve& conversion_;
  const Progress& progress_;
  Verification verification_;
  Records records_;
  std::vector<std::vector<const Record*>> systems_;  // of the records
  GroupPages group_;
  InputPages inputPages_;
  std::vector<std::string> resultNames_;
  std::ptrdiff_t numbersInResults_ = 0;  // instrument ids
  std::vector<ResultPage> results_;      // only if they are not as expected
};

void Verifier::report(const std::vector<Finding>& findings) {
  verification_.findings.insert(verification_.findings.end(), findings.begin(), findings.end());
}

void Verifier::digest(const std::string& name, std::string_view bytes) {
  verification_.files.push_back({name, sha256(bytes)});
}

void Verifier::addInputs() {
  verification_.counts.inputs = group_.inputs().size();
  for (const auto& [name, input] : group_.inputs()) {
    if (!input.digest.empty()) {
      verification_.files.push_back({name, input.digest});
    }
  }
}

/// Derives the analysis and compares the texts with it. Returns why no analysis can be made.
std::optional<Finding> Verifier::derive(const std::string& namesFile, FoundTexts& texts) {
  RecordReader records;
  const auto onReport = [&](std::string_view lines) {
    for (const std::string_view line : linesOf(lines)) {
      texts.expect(line);
      records.addLine(line);
    }
  };
  auto failure = group_.derive(selectedFilesOf(files_, machine_, namesFile), onReport);
  texts.finish();
  records_ = std::move(records).take();
  return failure;
}

/// Groups the records by system. The systems must be numbered without a gap.
void Verifier::groupRecords() {
  std::map<int, std::vector<const Record*>> systems;
  std::set<std::pair<const std::string*, int>> listed;
  for (const Record& record : records_.staves) {
    systems[record.system].push_back(&record);
    if (!group_.inputs().contains(*record.file)) {
      report(*record.file, "cannot be read, and has a staff of system " + std::to_string(record.system));
    }
    if (!listed.insert({record.file, record.staff}).second) {
      report(reportName, "lists staff " + std::to_string(record.staff) + " of " + *record.file + " more than once");
    }
  }
  for (auto& [number, records] : systems) {
    if (number != static_cast<int>(systems_.size()) + 1) {
      report(reportName, "has a system " + std::to_string(number) + ", which no conversion reaches");
    } else {
      systems_.push_back(std::move(records));
    }
  }
}

/// False when there cannot be any.
bool Verifier::readResults() {
  auto names = resultNames(machine_, conversion_.firstResultFile, systems_.size());
  if (!names) {
    report(conversion_.firstResultFile, "cannot be the name of a first result");
    return false;
  }
  resultNames_ = std::move(*names);
  std::size_t done = 0;
  for (const std::string& name : resultNames_) {
    progress_(done++, resultNames_.size(), "results read");
    const LoadedPage result = group_.load(name);
    if (!result.bytes.empty()) {
      digest(name, result.bytes);
    }
    numbersInResults_ += std::count_if(result.items.begin(), result.items.end(), isInstrumentNumber);
  }
  progress_(done, resultNames_.size(), "results read");
  verification_.counts.results = resultNames_.size();
  return true;
}

/// Unless that is known, results that have more instrument ids than their inputs show them.
bool Verifier::numbersAreShown() {
  if (conversion_.showNumbers) {
    return *conversion_.showNumbers;
  }
  std::ptrdiff_t more = numbersInResults_;
  for (const Record& record : records_.staves) {
    const auto input = group_.inputs().find(*record.file);
    if (input != group_.inputs().end()) {
      const auto ofStaff = input->second.numbers.find(record.staff);
      more -= ofStaff == input->second.numbers.end() ? 0 : ofStaff->second;
    }
  }
  return more > 0;
}

/// Looks at one system after the other. False when the results are not as expected.
bool Verifier::proveOneByOne(const ReportedSystems& reported, bool showNumbers) {
  const auto progress = [&](std::size_t system) {
    inputPages_.forgetUnused();
    showChecked(system);
  };
  auto proved = proveSystemBySystem(
      reported, showNumbers, resultNames_, [&](const std::string& name) { return group_.load(name); }, progress);
  if (!proved) {
    return false;
  }
  Counts& counts = verification_.counts;
  counts.carried = proved->counts.carried;
  counts.barlines = proved->counts.barlines;
  counts.added = proved->counts.added;
  countLeftOut();
  showChecked(resultNames_.size());
  const StrayResults stray = strayResults(files_, machine_, conversion_.firstResultFile, resultNames_);
  report(stray.doubled);
  reportSurplus(stray);
  report(proved->layout);
  return true;
}

/// Loads all results, and derives what they should be.
void Verifier::deriveExpected(const ReportedSystems& reported, bool showNumbers) {
  const auto derive = conversion_.fits ? expectedFittingPages : expectedPages;
  ExpectedPages expected = derive(reported, showNumbers, [&](std::size_t system) { showChecked(system); });
  if (!expected.error.empty()) {
    const std::string system = std::to_string(expected.pages.size() + 1);
    report(reportName, "has a system " + system + " that cannot be converted: " + expected.error);
  }
  for (std::size_t i = 0; i < std::min(resultNames_.size(), expected.pages.size()); ++i) {
    results_.push_back({resultNames_[i], std::move(expected.pages[i]), group_.load(resultNames_[i])});
    countItems(results_.back().expected, verification_.counts);
  }
  showChecked(resultNames_.size());
  countLeftOut();
}

void Verifier::countLeftOut() {
  Counts& counts = verification_.counts;
  for (const auto& [name, input] : group_.inputs()) {
    counts.leftOut += input.items;
  }
  counts.leftOut -= std::min(counts.leftOut, counts.carried + counts.barlines);
}

void Verifier::proveResults() {
  const KnownInstruments known = knownInstruments(records_.staves, conversion_.listed, group_.firstClefs());
  const auto itemsOf = [&](const Record& record) {
    return &inputPages_.staff(*record.file, static_cast<float>(record.staff));
  };
  const ReportedSystems reported{known, systems_, itemsOf, group_.firstClefs()};
  const bool showNumbers = numbersAreShown();
  if (conversion_.fits || !proveOneByOne(reported, showNumbers)) {
    deriveExpected(reported, showNumbers);
    compare();
  }
  for (const std::string& name : group_.changed()) {
    report(name, "has changed while it was compared");
  }
}

void Verifier::reportSurplus(const StrayResults& stray) {
  for (const std::string& name : stray.surplus) {
    if (!group_.inputs().contains(name) && !group_.inputs().contains(machine_.upperCase(name))) {
      report(name, "is a result, and the report has no system for it");
    }
  }
}

void Verifier::compare() {
  const StrayResults stray = strayResults(files_, machine_, conversion_.firstResultFile, resultNames_);
  report(stray.doubled);
  if (const auto others = findOtherResults(results_)) {
    verification_.findings.push_back(*others);
    return;
  }
  LayoutComparison layout;
  for (const ResultPage& result : results_) {
    if (!result.found.error.empty()) {
      report(result.name, result.found.error);
    }
    layout.add(result.name, result.found);
  }
  reportSurplus(stray);
  report(std::move(layout).findings());
  const auto differences = compareItems(results_);
  report(differences);
  if (!differences.empty()) {
    return;
  }
  for (const ResultPage& result : results_) {
    report(compareBytes(result));
  }
}

Verification Verifier::run(const std::string& namesFile) {
  FoundTexts texts(files_);
  const auto failure = derive(namesFile, texts);
  report(texts.unreadable());
  verification_.files = texts.digests();
  addInputs();
  if (failure) {
    verification_.findings.push_back(*failure);
    return std::move(verification_);
  }
  report(texts.differences(group_.analysis().verdict));
  std::for_each(records_.errors.begin(), records_.errors.end(), [&](const auto& what) { report(reportName, what); });
  report(compareWithList(records_.staves, conversion_.listed));
  groupRecords();
  if (readResults()) {
    proveResults();
  }
  return std::move(verification_);
}

}  // namespace

Verification verify(Files& files, Machine& machine, const std::string& namesFile, const ConversionToProve& conversion,
                    const Progress& progress) {
  return Verifier(files, machine, conversion, progress).run(namesFile);
}

}  // namespace kiv::proof
