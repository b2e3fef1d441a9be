#pragma once

#include <optional>
#include <string>
#include <vector>

#include "apps/kivsys/output/outcome_json.h"
#include "diagnostics/layouts.h"
#include "diagnostics/problems.h"

namespace kiv {

/// A problem as an object, with the path of its file among these; what is not certain is null. Without paths, as in a
/// run like the panel's, it has none.
Json jsonOf(const Problem& problem, const FilePaths& paths);
/// One layout, which must outlive the object, without its deviations.
LongObject jsonOf(const Layouts& layouts, const LayoutClass& layout);
/// A deviation of a layout as an object.
Json jsonOf(const Layouts& layouts, const Deviation& deviation);
/// All layouts, which must outlive it, with their deviations.
AddElements elementsOf(const Layouts& layouts);

/// Adds numbers as ranges of those that follow one another.
class RangesJson {
 public:
  explicit RangesJson(JsonArray& array) : array_(array) {}

  void add(int number);
  /// Adds the last range.
  void finish();

 private:
  JsonArray& array_;
  int first_ = 0;
  std::optional<int> last_;  // nullopt without a range
};

/// A whole number without a fraction, others as they are.
Json numberJson(double number);

}  // namespace kiv
