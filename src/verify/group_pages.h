#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/files.h"
#include "platform/machine.h"
#include "verify/derived_analysis.h"
#include "verify/first_clefs.h"
#include "verify/page_items.h"
#include "verify/selected_files.h"
#include "verify/verify.h"

namespace kiv::proof {

/// What is kept of an input once it was read.
struct InputFacts {
  std::size_t items = 0;
  std::string digest;                                 ///< "" of an empty file, and of one that cannot be read
  std::unordered_map<float, std::ptrdiff_t> numbers;  ///< of instrument ids, on each staff that shows some
};

bool isInstrumentNumber(const PageItem& read);

/// The pages of a conversion and their analysis. Files are read again whenever they are needed, as a group is too large
/// to keep all its items.
class GroupPages {
 public:
  GroupPages(Files& files, Machine& machine, const Progress& progress)
      : files_(files), machine_(machine), progress_(progress) {}

  /// Loads a page file, and notes whether it has changed since it was loaded first.
  LoadedPage load(const std::string& name);
  /// Reads all inputs, and derives report, verdict and first clefs. Returns why no analysis can be made of them.
  std::optional<Finding> derive(const SelectedFiles& selected, const ReportSink& report);

  const std::map<std::string, InputFacts>& inputs() const { return inputs_; }
  const DerivedAnalysis& analysis() const { return derived_; }
  FirstClefs& firstClefs() { return firstClefs_; }
  /// The files that had another content when they were loaded again.
  const std::set<std::string>& changed() const { return changed_; }

 private:
  LoadedPage readInput(const std::string& name, std::size_t all);
  std::optional<Finding> deriveFrom(const std::vector<PageFiles>& pages, std::size_t all, const ReportSink& report);

  Files& files_;
  Machine& machine_;
  const Progress& progress_;
  std::map<std::string, InputFacts> inputs_;
  std::map<std::string, StavesAndClefs> clefs_;  // of the inputs, until the first clefs are known
  std::map<std::string, std::size_t> contents_;  // hash values of all files that were loaded
  std::set<std::string> changed_;
  DerivedAnalysis derived_;
  FirstClefs firstClefs_;
};

}  // namespace kiv::proof
