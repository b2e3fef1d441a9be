#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"
#include "platform/machine.h"
#include "verify/derived_analysis.h"
#include "verify/first_clefs.h"
#include "verify/input_files.h"
#include "verify/page_items.h"
#include "verify/selected_files.h"
#include "verify/verify.h"

namespace kiv::proof {

/// The pages of a conversion and their analysis. Files are read again whenever they are needed, as a group is too large
/// to keep all its items.
class GroupPages {
 public:
  GroupPages(Files& files, Machine& machine, const Progress& progress)
      : files_(files), machine_(machine), progress_(progress) {}

  /// Loads an input, or a file that is known by its name alone.
  LoadedPage load(const std::string& name);
  /// Loads a result, which may bear the name of an input, and notes in its facts what it holds.
  LoadedPage loadResult(const std::string& name, FileFacts& facts);
  /// Reads all inputs, and derives report, verdict and first clefs. Returns why no analysis can be made of them.
  std::optional<Finding> derive(SelectedFiles selected, const ReportSink& report);

  const InputFiles& inputs() const { return inputs_; }
  const std::string& verdict() const { return verdict_; }
  FirstClefs& firstClefs() { return firstClefs_; }
  /// The files that had another content when they were loaded again, be it as input or as result.
  const std::set<std::string>& changed() const { return changed_; }

 private:
  void note(const std::string& name, std::string_view bytes, FileFacts& facts);
  LoadedPage load(const std::string& name, FileFacts& facts);
  LoadedPage readInput(const std::string& name);
  std::optional<Finding> deriveFrom(const SelectedPages& pages, const ReportSink& report);

  Files& files_;
  Machine& machine_;
  const Progress& progress_;
  InputFiles inputs_;
  std::size_t inputsRead_ = 0;
  std::map<std::string, FileFacts> others_;  // files that are no inputs
  std::set<std::string> changed_;
  std::string verdict_;
  FirstClefs firstClefs_;
};

}  // namespace kiv::proof
