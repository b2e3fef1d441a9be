#pragma once

#include <string>
#include <vector>

namespace kiv {

/// The group that the panel has analyzed last.
struct AnalyzedGroup {
  std::vector<std::string> files;  ///< the input files: full names, in the order of the names file
  bool allowZeroInstrId = false;
  std::string firstResult;  ///< of the conversion that has followed, as it stood in the panel; "" without one

  bool operator==(const AnalyzedGroup&) const = default;
};

}  // namespace kiv
