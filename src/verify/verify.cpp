#include "verify/verify.h"

#include <algorithm>
#include <map>
#include <set>
#include <unordered_map>

#include "base/sha256.h"
#include "platform/bounded_file.h"
#include "verify/compare_items.h"
#include "verify/compare_layout.h"
#include "verify/compare_report.h"
#include "verify/first_clefs.h"
#include "verify/report_records.h"
#include "verify/result_names.h"
#include "verify/system_model.h"

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
  Verifier(Files& files, Machine& machine, const AnalysisAgain& again, const ConversionToProve& conversion)
      : files_(files), machine_(machine), again_(again), conversion_(conversion) {}

  Verification run();

 private:
  void report(const std::string& file, const std::string& what) { verification_.findings.push_back({file, 0, what}); }
  void report(const std::vector<Finding>& findings);
  std::string readText(const std::string& name, const std::string& expected, std::size_t limit);
  void digest(const std::string& name, std::string_view bytes);
  void readInputs();
  void groupRecords();
  void readResults();
  bool numbersAreShown();
  void deriveExpected();
  void compare();

  Files& files_;
  Machine& machine_;
  const AnalysisAgain& again_;
  const ConversionToProve& conversion_;
  Verification verification_;
  Records records_;
  std::vector<std::vector<Record>> systems_;
  std::map<std::string, InputPage> inputs_;
  FirstClefs firstClefs_;
  std::vector<ResultPage> results_;
};

void Verifier::report(const std::vector<Finding>& findings) {
  verification_.findings.insert(verification_.findings.end(), findings.begin(), findings.end());
}

void Verifier::digest(const std::string& name, std::string_view bytes) {
  verification_.files.push_back({name, sha256(bytes)});
}

std::string Verifier::readText(const std::string& name, const std::string& expected, std::size_t limit) {
  BoundedContent text = readBounded(files_, name, limit);
  if (!text.bytes) {
    report(name, text.isTooLarge ? tooLarge(limit, "this file") : "cannot be read");
    return "";
  }
  digest(name, *text.bytes);
  if (again_.failure.empty()) {
    report(compareText(name, *text.bytes, expected));
  }
  return std::move(*text.bytes);
}

void Verifier::readInputs() {
  std::set<std::string> names(again_.inputs.begin(), again_.inputs.end());
  for (const Record& record : records_.staves) {
    names.insert(record.file);
  }
  std::map<std::string, StavesAndClefs> clefs;
  for (const std::string& name : names) {
    LoadedPage page = loadPage(files_, name);
    if (!page.error.empty()) {
      report(name, page.error);
    }
    if (!page.bytes.empty()) {
      digest(name, page.bytes);
    }
    clefs.emplace(name, stavesAndClefsOf(page));
    InputPage& input = inputs_[name];
    input.items = page.items.size();
    for (PageItem& item : page.items) {
      const float staff = item.item[par::staff];
      input.staves[staff].push_back(std::move(item));
    }
  }
  firstClefs_ = firstClefsOf(machine_, again_.inputs, clefs);
  verification_.counts.inputs = inputs_.size();
}

/// Groups the records by system. The systems must be numbered without a gap.
void Verifier::groupRecords() {
  std::map<int, std::vector<Record>> systems;
  std::set<std::pair<std::string, int>> listed;
  for (const Record& record : records_.staves) {
    systems[record.system].push_back(record);
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

void Verifier::readResults() {
  const auto names = resultNames(machine_, conversion_.firstResultFile, systems_.size());
  if (!names) {
    report(conversion_.firstResultFile, "cannot be the name of a first result");
    return;
  }
  for (const std::string& name : *names) {
    ResultPage result{name, {}, loadPage(files_, name)};
    if (!result.found.error.empty()) {
      report(name, result.found.error);
    }
    if (!result.found.bytes.empty()) {
      digest(name, result.found.bytes);
    }
    results_.push_back(std::move(result));
  }
  for (const std::string& name : surplusResults(files_, machine_, conversion_.firstResultFile, *names)) {
    if (!inputs_.contains(name) && !inputs_.contains(machine_.upperCase(name))) {
      report(name, "is a result, and the report has no system for it");
    }
  }
  verification_.counts.results = results_.size();
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
  GroupKnowledge group{KnownInstruments(records_.staves), {}};
  const bool showNumbers = numbersAreShown();
  for (std::size_t i = 0; i < results_.size(); ++i) {
    SystemModel model(group, firstClefs_);
    for (const Record& record : systems_[i]) {
      model.addStaff(record, inputs_[record.file].staves[record.staff]);
    }
    model.complete(showNumbers);
    if (!model.error().empty()) {
      report(reportName, "has a system " + std::to_string(i + 1) + " that cannot be converted: " + model.error());
      results_.resize(i);
      break;
    }
    results_[i].expected = model.page();
  }
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

void Verifier::compare() {
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

Verification Verifier::run() {
  if (!again_.failure.empty()) {
    report(reportName, "cannot be made again: " + again_.failure);
  }
  records_ = readRecords(readText(reportName, again_.report, most_bytes::report));
  for (const std::string& error : records_.errors) {
    report(reportName, error);
  }
  readText(verdictName, again_.verdict, most_bytes::verdict);
  readInputs();
  groupRecords();
  readResults();
  deriveExpected();
  compare();
  return std::move(verification_);
}

}  // namespace

Verification verify(Files& files, Machine& machine, const AnalysisAgain& again, const ConversionToProve& conversion) {
  return Verifier(files, machine, again, conversion).run();
}

}  // namespace kiv::proof
