#include "verify/verify.h"

#include <algorithm>
#include <map>
#include <set>
#include <unordered_map>

#include "analysis/report.h"
#include "analysis/verdict.h"
#include "base/sha256.h"
#include "input/file_names.h"
#include "verify/compare_items.h"
#include "verify/compare_layout.h"
#include "verify/compare_report.h"
#include "verify/report_records.h"
#include "verify/result_names.h"
#include "verify/system_model.h"

namespace kiv::proof {
namespace {

/// The items of a page file by the staff on which they stand.
struct InputPage {
  std::unordered_map<float, std::vector<PageItem>> staves;
  std::size_t items = 0;
};

class Proof {
 public:
  Proof(Host& host, const AnalysisAgain& again, const ConversionToProve& conversion)
      : host_(host), again_(again), conversion_(conversion) {}

  Verification run();

 private:
  void find(const std::string& file, const std::string& what) { verification_.findings.push_back({file, 0, what}); }
  void take(std::vector<Finding> findings);
  std::string readText(const std::string& name, const std::string& expected);
  void digest(const std::string& name, std::string_view bytes);
  void readInputs();
  void sortRecords();
  void readResults();
  bool numbersAreShown();
  void thinkOut();
  void compare();

  Host& host_;
  const AnalysisAgain& again_;
  const ConversionToProve& conversion_;
  Verification verification_;
  Records records_;
  std::vector<std::vector<Record>> systems_;
  std::map<std::string, InputPage> inputs_;
  std::vector<ResultPage> results_;
};

void Proof::take(std::vector<Finding> findings) {
  verification_.findings.insert(verification_.findings.end(), findings.begin(), findings.end());
}

void Proof::digest(const std::string& name, std::string_view bytes) {
  verification_.files.push_back({name, sha256(bytes)});
}

std::string Proof::readText(const std::string& name, const std::string& expected) {
  auto text = readWhole(host_, name);
  if (!text) {
    find(name, "cannot be read");
    return "";
  }
  digest(name, *text);
  if (again_.trouble.empty()) {
    take(compareText(name, *text, expected));
  }
  return std::move(*text);
}

void Proof::readInputs() {
  std::set<std::string> names(again_.inputs.begin(), again_.inputs.end());
  for (const Record& record : records_.staves) {
    names.insert(record.file);
  }
  for (const std::string& name : names) {
    LoadedPage page = loadPage(host_, name);
    if (!page.trouble.empty()) {
      find(name, page.trouble);
    }
    if (!page.bytes.empty()) {
      digest(name, page.bytes);
    }
    InputPage& input = inputs_[name];
    input.items = page.items.size();
    for (PageItem& item : page.items) {
      const float staff = item.item.par[par::staff];
      input.staves[staff].push_back(std::move(item));
    }
  }
  verification_.counts.inputs = inputs_.size();
}

/// Deals the records to their systems, which must be numbered without a gap.
void Proof::sortRecords() {
  std::map<int, std::vector<Record>> systems;
  std::set<std::pair<std::string, int>> known;
  for (const Record& record : records_.staves) {
    systems[record.system].push_back(record);
    if (!known.insert({record.file, record.staff}).second) {
      find(reportFile, "lists staff " + std::to_string(record.staff) + " of " + record.file + " more than once");
    }
  }
  for (const auto& [number, records] : systems) {
    if (number != static_cast<int>(systems_.size()) + 1) {
      find(reportFile, "has a system " + std::to_string(number) + ", which no conversion reaches");
    } else {
      systems_.push_back(records);
    }
  }
}

void Proof::readResults() {
  const auto names = resultNames(host_, conversion_.firstResultFile, systems_.size());
  if (!names) {
    find(conversion_.firstResultFile, "cannot be the name of a first result");
    return;
  }
  for (const std::string& name : *names) {
    ResultPage result{name, {}, loadPage(host_, name)};
    if (!result.found.trouble.empty()) {
      find(name, result.found.trouble);
    }
    if (!result.found.bytes.empty()) {
      digest(name, result.found.bytes);
    }
    results_.push_back(std::move(result));
  }
  for (const std::string& name : surplusResults(host_, conversion_.firstResultFile, *names)) {
    if (!inputs_.contains(name) && !inputs_.contains(host_.upperCase(name))) {
      find(name, "is a result, and the report has no system for it");
    }
  }
  verification_.counts.results = results_.size();
}

/// Where nobody has said so, results that have more instrument ids than their inputs show them.
bool Proof::numbersAreShown() {
  if (conversion_.showNumbers) {
    return *conversion_.showNumbers;
  }
  const auto isNumber = [](const PageItem& read) { return read.item.par[par::type] == type::instrumentNumber; };
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

void Proof::thinkOut() {
  RunKnowledge run{KnownInstruments(records_.staves), {}};
  const bool showNumbers = numbersAreShown();
  for (std::size_t i = 0; i < results_.size(); ++i) {
    SystemModel model(run, again_.firstClefs);
    for (const Record& record : systems_[i]) {
      model.carry(record, inputs_[record.file].staves[record.staff]);
    }
    model.complete(showNumbers);
    if (!model.trouble().empty()) {
      find(reportFile, "has a system " + std::to_string(i + 1) + " that cannot be converted: " + model.trouble());
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

void Proof::compare() {
  take(compareLayout(results_));
  const auto differences = compareItems(results_);
  take(differences);
  if (!differences.empty()) {
    return;
  }
  for (const ResultPage& result : results_) {
    take(compareBytes(result));
  }
}

Verification Proof::run() {
  if (!again_.trouble.empty()) {
    find(reportFile, "cannot be made again: " + again_.trouble);
  }
  records_ = readRecords(readText(reportFile, again_.report));
  for (const std::string& trouble : records_.troubles) {
    find(reportFile, trouble);
  }
  readText(verdictFile, again_.verdict);
  readInputs();
  sortRecords();
  readResults();
  thinkOut();
  compare();
  return std::move(verification_);
}

}  // namespace

Verification verify(Host& host, const AnalysisAgain& again, const ConversionToProve& conversion) {
  return Proof(host, again, conversion).run();
}

}  // namespace kiv::proof
