#include "verify/verify.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <optional>
#include <set>
#include <span>
#include <utility>

#include "base/sha256.h"
#include "verify/compare_items.h"
#include "verify/compare_layout.h"
#include "verify/expected_pages.h"
#include "verify/found_texts.h"
#include "verify/group_pages.h"
#include "verify/input_files.h"
#include "verify/input_pages.h"
#include "verify/other_results.h"
#include "verify/records_by_system.h"
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
  void prove(const std::string& namesFile);
  void report(const std::string& file, const std::string& what) { verification_.findings.push_back({file, 0, what}); }
  void report(const std::vector<Finding>& findings);
  void addFiles();
  std::optional<Finding> derive(const std::string& namesFile, FoundTexts& texts);
  bool readResults();
  bool numbersAreShown() const;
  std::string nameOfResult(std::size_t index) const { return resultName(stemOfResults_, index + 1); }
  LoadedPage loadResult(std::size_t index) { return group_.loadResult(nameOfResult(index), resultFacts_[index]); }
  bool proveOneByOne(const ReportedSystems& reported, bool showNumbers);
  void deriveExpected(const ReportedSystems& reported, bool showNumbers);
  void countLeftOut();
  void proveResults();
  void compare();
  StrayResults findStrayResults();
  void reportSurplus(const StrayResults& stray);
  void showChecked(std::size_t done) { progress_(done, resultFacts_.size(), "results checked"); }

  Files& files_;
  Machine& machine_;
  const ConversionToProve& conversion_;
  const Progress& progress_;
  Verification verification_;
  GroupPages group_;
  std::optional<Records> records_{group_.inputs()};
  std::optional<KnownInstruments> known_;         // once the pages are analyzed
  std::vector<std::span<const Record>> systems_;  // of the records
  InputPages inputPages_;
  std::string stemOfResults_;
  std::vector<FileFacts> resultFacts_;
  std::ptrdiff_t numbersInResults_ = 0;  // instrument ids
  std::vector<ResultPage> results_;      // only if they are not as expected
};

void Verifier::report(const std::vector<Finding>& findings) {
  verification_.findings.insert(verification_.findings.end(), findings.begin(), findings.end());
}

/// Adds inputs and results that have been read.
void Verifier::addFiles() {
  const InputFiles& inputs = group_.inputs();
  std::vector<DigestedFile>& files = verification_.files;
  files.reserve(files.size() + inputs.size() + resultFacts_.size());
  const auto add = [&](const std::string& name, const FileFacts& facts) {
    if (facts.digest) {
      files.push_back({name, hexDigits(*facts.digest)});
    }
  };
  for (std::size_t i = 0; i < inputs.size(); ++i) {
    add(inputs.name(i), inputs.facts(i));
  }
  for (std::size_t i = 0; i < resultFacts_.size(); ++i) {
    add(nameOfResult(i), resultFacts_[i]);
  }
}

/// Derives the analysis and compares the texts with it. Returns why no analysis can be made.
std::optional<Finding> Verifier::derive(const std::string& namesFile, FoundTexts& texts) {
  const auto onReport = [&](std::string_view lines) {
    for (const std::string_view line : linesOf(lines)) {
      texts.expect(line);
      records_->addLine(line);
    }
  };
  auto failure = group_.derive(selectedFilesOf(files_, machine_, namesFile), onReport);
  texts.finish();
  return failure;
}

/// False when there cannot be any.
bool Verifier::readResults() {
  const auto stem = stemOfResults(machine_, conversion_.firstResultFile);
  if (!stem) {
    report(conversion_.firstResultFile, "cannot be the name of a first result");
    return false;
  }
  stemOfResults_ = *stem;
  resultFacts_.resize(systems_.size());
  for (std::size_t i = 0; i < resultFacts_.size(); ++i) {
    progress_(i, resultFacts_.size(), "results read");
    const LoadedPage result = loadResult(i);
    numbersInResults_ += std::count_if(result.items.begin(), result.items.end(), isInstrumentNumber);
  }
  progress_(resultFacts_.size(), resultFacts_.size(), "results read");
  verification_.counts.results = resultFacts_.size();
  return true;
}

/// Unless that is known, results that have more instrument ids than their inputs show them.
bool Verifier::numbersAreShown() const {
  if (conversion_.showNumbers) {
    return *conversion_.showNumbers;
  }
  std::ptrdiff_t more = numbersInResults_;
  for (const Record& record : records_->staves()) {
    if (records_->isOfInput(record)) {
      more -= group_.inputs().facts(record.file).numbersOn(record.staff);
    }
  }
  return more > 0;
}

/// Looks at one system after the other. False when the results are not as expected.
bool Verifier::proveOneByOne(const ReportedSystems& reported, bool showNumbers) {
  const auto progress = [&](std::size_t system) {
    std::set<std::string_view> files;
    for (const Record& record : systems_[system]) {
      files.insert(records_->fileOf(record));
    }
    inputPages_.keepOnly(files);
    showChecked(system);
  };
  const auto load = [&](std::size_t i) { return FoundResult{nameOfResult(i), loadResult(i)}; };
  auto proved = proveSystemBySystem(reported, showNumbers, load, progress);
  if (!proved) {
    return false;
  }
  Counts& counts = verification_.counts;
  counts.carried = proved->counts.carried;
  counts.barlines = proved->counts.barlines;
  counts.added = proved->counts.added;
  countLeftOut();
  showChecked(resultFacts_.size());
  const StrayResults stray = findStrayResults();
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
  for (std::size_t i = 0; i < std::min(resultFacts_.size(), expected.pages.size()); ++i) {
    results_.push_back({nameOfResult(i), std::move(expected.pages[i]), loadResult(i)});
    countItems(results_.back().expected, verification_.counts);
  }
  showChecked(resultFacts_.size());
  countLeftOut();
}

void Verifier::countLeftOut() {
  Counts& counts = verification_.counts;
  for (std::size_t i = 0; i < group_.inputs().size(); ++i) {
    counts.leftOut += group_.inputs().facts(i).items;
  }
  counts.leftOut -= std::min(counts.leftOut, counts.carried + counts.barlines);
}

void Verifier::proveResults() {
  const auto itemsOf = [&](const Record& record) {
    return &inputPages_.staff(records_->fileOf(record), static_cast<float>(record.staff));
  };
  const ReportedSystems reported{*known_, *records_, systems_, itemsOf, group_.firstClefs()};
  const bool showNumbers = numbersAreShown();
  if (conversion_.fits || !proveOneByOne(reported, showNumbers)) {
    deriveExpected(reported, showNumbers);
    compare();
  }
  for (const std::string& name : group_.changed()) {
    report(name, "has changed while it was compared");
  }
}

StrayResults Verifier::findStrayResults() {
  std::vector<std::string> names;
  names.reserve(resultFacts_.size());
  for (std::size_t i = 0; i < resultFacts_.size(); ++i) {
    names.push_back(nameOfResult(i));
  }
  return strayResults(files_, machine_, conversion_.firstResultFile, names);
}

void Verifier::reportSurplus(const StrayResults& stray) {
  for (const std::string& name : stray.surplus) {
    if (!group_.inputs().contains(name) && !group_.inputs().contains(machine_.upperCase(name))) {
      report(name, "is a result, and the report has no system for it");
    }
  }
}

void Verifier::compare() {
  const StrayResults stray = findStrayResults();
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

void Verifier::prove(const std::string& namesFile) {
  FoundTexts texts(files_);
  const auto failure = derive(namesFile, texts);
  report(texts.unreadable());
  verification_.files = texts.digests();
  verification_.counts.inputs = group_.inputs().size();
  if (failure) {
    verification_.findings.push_back(*failure);
    return;
  }
  report(texts.differences(group_.verdict()));
  for (const std::string& what : records_->errors()) {
    report(reportName, what);
  }
  report(compareWithList(*records_, conversion_.listed));
  known_ = knownInstruments(records_->staves(), conversion_.listed, group_.firstClefs());
  RecordsBySystem grouped = groupBySystem(*records_);  // no more in the order of the report
  report(grouped.findings);
  systems_ = std::move(grouped.systems);
  if (readResults()) {
    proveResults();
  }
}

Verification Verifier::run(const std::string& namesFile) {
  prove(namesFile);
  // The names of all files take the memory that these have taken.
  results_.clear();
  inputPages_.keepOnly({});
  records_.reset();
  addFiles();
  return std::move(verification_);
}

}  // namespace

Verification verify(Files& files, Machine& machine, const std::string& namesFile, const ConversionToProve& conversion,
                    const Progress& progress) {
  return Verifier(files, machine, conversion, progress).run(namesFile);
}

}  // namespace kiv::proof
