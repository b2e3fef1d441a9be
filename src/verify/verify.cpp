#include "verify/verify.h"

#include <algorithm>
#include <map>
#include <set>
#include <unordered_map>
#include <utility>

#include "base/sha256.h"
#include "platform/bounded_file.h"
#include "verify/compare_items.h"
#include "verify/compare_layout.h"
#include "verify/compare_report.h"
#include "verify/derived_analysis.h"
#include "verify/expected_pages.h"
#include "verify/first_clefs.h"
#include "verify/other_results.h"
#include "verify/report_records.h"
#include "verify/result_names.h"
#include "verify/selected_files.h"

namespace kiv::proof {
namespace {

constexpr const char* reportName = "KivSystem2.TXT";
constexpr const char* verdictName = "KivSystem1.TXT";

/// The items of a page file, by their staff.
struct InputPage {
  std::unordered_map<float, std::vector<PageItem>> staves;
  std::size_t items = 0;
};

class Verifier {
 public:
  Verifier(Files& files, Machine& machine, const ConversionToProve& conversion, const Progress& progress)
      : files_(files), machine_(machine), conversion_(conversion), progress_(progress) {}

  Verification run(const std::string& namesFile);

 private:
  void report(const std::string& file, const std::string& what) { verification_.findings.push_back({file, 0, what}); }
  void report(const std::vector<Finding>& findings);
  std::optional<std::string> readText(const std::string& name, std::size_t limit);
  void digest(const std::string& name, std::string_view bytes);
  LoadedPages loadInputs(const std::vector<std::string>& names);
  bool derive(const SelectedFiles& selected);
  std::optional<Finding> deriveFrom(const std::vector<PageFiles>& pages, LoadedPages& files);
  void compareTexts(const std::optional<std::string>& reportText, const std::optional<std::string>& verdictText);
  void groupRecords();
  bool readResults();
  bool numbersAreShown();
  void deriveExpected();
  void compare();
  void reportMissingAndSurplus(const StrayResults& stray);

  Files& files_;
  Machine& machine_;
  const ConversionToProve& conversion_;
  const Progress& progress_;
  Verification verification_;
  DerivedAnalysis derived_;
  Records records_;
  std::vector<std::vector<Record>> systems_;
  std::map<std::string, InputPage> inputs_;
  FirstClefs firstClefs_;
  std::vector<std::string> resultNames_;
  std::vector<ResultPage> results_;
};

void Verifier::report(const std::vector<Finding>& findings) {
  verification_.findings.insert(verification_.findings.end(), findings.begin(), findings.end());
}

void Verifier::digest(const std::string& name, std::string_view bytes) {
  verification_.files.push_back({name, sha256(bytes)});
}

std::optional<std::string> Verifier::readText(const std::string& name, std::size_t limit) {
  BoundedContent text = readBounded(files_, name, limit);
  if (text.bytes) {
    digest(name, *text.bytes);
  } else {
    report(name, text.isTooLarge ? tooLarge(limit, "this file") : "cannot be read");
  }
  return std::move(text.bytes);
}

LoadedPages Verifier::loadInputs(const std::vector<std::string>& names) {
  LoadedPages pages;
  const std::set<std::string> distinct(names.begin(), names.end());
  for (const std::string& name : distinct) {
    progress_(pages.size(), distinct.size(), "pages read");
    const LoadedPage& page = pages.emplace(name, loadPage(files_, name)).first->second;
    if (!page.bytes.empty()) {
      digest(name, page.bytes);
    }
  }
  progress_(pages.size(), distinct.size(), "pages read");
  verification_.counts.inputs = pages.size();
  return pages;
}

/// Derives report, verdict and first clefs. False when no analysis can be made of the selection.
bool Verifier::derive(const SelectedFiles& selected) {
  LoadedPages files = loadInputs(selected.names);
  const SelectedPages pages = pagesOf(machine_, selected.names);
  std::optional<Finding> failure = selected.failure;
  if (!failure) {
    failure = pages.failure ? pages.failure : deriveFrom(pages.pages, files);
  }
  if (failure) {
    verification_.findings.push_back(*failure);
  }
  return !failure;
}

/// Moves the items of the files to the inputs.
std::optional<Finding> Verifier::deriveFrom(const std::vector<PageFiles>& pages, LoadedPages& files) {
  derived_ = deriveAnalysis(machine_, pages, files);
  std::map<std::string, StavesAndClefs> clefs;
  for (auto& [name, page] : files) {
    clefs.emplace(name, stavesAndClefsOf(page));
    InputPage& input = inputs_[name];
    input.items = page.items.size();
    for (PageItem& item : page.items) {
      const float staff = item.item[par::staff];
      input.staves[staff].push_back(std::move(item));
    }
  }
  GroupClefs group = firstClefsOf(pages, clefs);
  firstClefs_ = std::move(group.clefs);
  if (!derived_.failure && !group.endedBy.empty()) {
    return Finding{group.endedBy, 0, "has a clef of an instrument that 16 bits do not hold"};
  }
  return derived_.failure;
}

/// With a report of other pages, the verdict is that of others, too.
void Verifier::compareTexts(const std::optional<std::string>& reportText,
                            const std::optional<std::string>& verdictText) {
  const auto onReport = reportText ? compareReport(reportName, *reportText, derived_.report) : std::vector<Finding>();
  report(onReport);
  if (onReport.empty() && verdictText) {
    report(compareVerdict(verdictName, *verdictText, derived_.verdict));
  }
}

/// Groups the records by system. The systems must be numbered without a gap.
void Verifier::groupRecords() {
  std::map<int, std::vector<Record>> systems;
  std::set<std::pair<std::string, int>> listed;
  for (const Record& record : records_.staves) {
    systems[record.system].push_back(record);
    if (!inputs_.contains(record.file)) {
      report(record.file, "cannot be read, and has a staff of system " + std::to_string(record.system));
    }
    if (!listed.insert({record.file, record.staff}).second) {
      report(reportName, "lists staff " + std::to_string(record.staff) + " of " + record.file + " more than once");
    }
  }
  for (const auto& [number, records] : systems) {
    if (number != static_cast<int>(systems_.size()) + 1) {
      report(reportName, "has a system " + std::to_string(number) + ", which no conversion reaches");
    } else {
      systems_.push_back(records);
    }
  }
}

/// False when there cannot be any.
bool Verifier::readResults() {
  const auto names = resultNames(machine_, conversion_.firstResultFile, systems_.size());
  if (!names) {
    report(conversion_.firstResultFile, "cannot be the name of a first result");
    return false;
  }
  resultNames_ = *names;
  for (const std::string& name : resultNames_) {
    progress_(results_.size(), resultNames_.size(), "results read");
    ResultPage result{name, {}, loadPage(files_, name)};
    if (!result.found.bytes.empty()) {
      digest(name, result.found.bytes);
    }
    results_.push_back(std::move(result));
  }
  progress_(results_.size(), resultNames_.size(), "results read");
  verification_.counts.results = results_.size();
  return true;
}

/// Unless that is known, results that have more instrument ids than their inputs show them.
bool Verifier::numbersAreShown() {
  if (conversion_.showNumbers) {
    return *conversion_.showNumbers;
  }
  const auto isNumber = [](const PageItem& read) { return read.item.type() == ItemType::instrumentNumber; };
  std::ptrdiff_t more = 0;
  for (const ResultPage& result : results_) {
    more += std::count_if(result.found.items.begin(), result.found.items.end(), isNumber);
  }
  for (const Record& record : records_.staves) {
    const auto& staff = inputs_[record.file].staves[record.staff];
    more -= std::count_if(staff.begin(), staff.end(), isNumber);
  }
  return more > 0;
}

void Verifier::deriveExpected() {
  const KnownInstruments known = knownInstruments(records_.staves, conversion_.listed, firstClefs_);
  const std::size_t all = results_.size();
  const auto itemsOf = [&](const Record& record) { return &inputs_[record.file].staves[record.staff]; };
  const auto progress = [&](std::size_t system) { progress_(system, all, "results checked"); };
  const auto derive = conversion_.fits ? expectedFittingPages : expectedPages;
  ExpectedPages expected = derive({known, systems_, itemsOf, firstClefs_}, numbersAreShown(), progress);
  if (!expected.error.empty()) {
    const std::string system = std::to_string(expected.pages.size() + 1);
    report(reportName, "has a system " + system + " that cannot be converted: " + expected.error);
  }
  results_.resize(std::min(all, expected.pages.size()));
  for (std::size_t i = 0; i < results_.size(); ++i) {
    results_[i].expected = std::move(expected.pages[i]);
  }
  progress_(all, all, "results checked");
  Counts& counts = verification_.counts;
  for (const ResultPage& result : results_) {
    counts.barlines += result.expected.barlines;
    for (const ExpectedItem& item : result.expected.items) {
      ++(item.origin.file.empty() ? counts.added : counts.carried);
    }
  }
  for (const auto& [name, input] : inputs_) {
    counts.leftOut += input.items;
  }
  counts.leftOut -= std::min(counts.leftOut, counts.carried + counts.barlines);
}

void Verifier::reportMissingAndSurplus(const StrayResults& stray) {
  for (const ResultPage& result : results_) {
    if (!result.found.error.empty()) {
      report(result.name, result.found.error);
    }
  }
  for (const std::string& name : stray.surplus) {
    if (!inputs_.contains(name) && !inputs_.contains(machine_.upperCase(name))) {
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
  reportMissingAndSurplus(stray);
  report(compareLayout(results_));
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
  const auto reportText = readText(reportName, most_bytes::report);
  const auto verdictText = readText(verdictName, most_bytes::verdict);
  if (!derive(selectedFilesOf(files_, machine_, namesFile))) {
    return std::move(verification_);
  }
  compareTexts(reportText, verdictText);
  records_ = readRecords(derived_.report);
  for (const std::string& error : records_.errors) {
    report(reportName, error);
  }
  report(compareWithList(records_.staves, conversion_.listed));
  groupRecords();
  if (readResults()) {
    deriveExpected();
    compare();
  }
  return std::move(verification_);
}

}  // namespace

Verification verify(Files& files, Machine& machine, const std::string& namesFile, const ConversionToProve& conversion,
                    const Progress& progress) {
  return Verifier(files, machine, conversion, progress).run(namesFile);
}

}  // namespace kiv::proof
