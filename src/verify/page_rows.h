#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "verify/finding.h"
#include "verify/page_files.h"
#include "verify/page_items.h"

namespace kiv::proof {

/// An item that an analysis keeps: a staff, a barline or brace, or a cue marker. P2 is raised by the staves of the
/// files below; P18 to P20 of its item are what the analysis finds out.
struct PageRow {
  Item item;
  std::string record;  ///< of a staff: the end of its record, which names its number in its file, and the file
  std::string file;
  int number = 0;  ///< of the item in its file
};

/// The rows of a page in the order of its systems, or why an analysis ends at this page.
struct PageRows {
  std::vector<PageRow> rows;
  std::optional<Finding> failure;

  bool failed() const { return failure.has_value(); }
  /// Only the first failure is kept.
  void fail(const std::string& file, int item, const std::string& what);
};

/// Reads the rows of a page: its files from the last to the first, each numbered above the one before. Rows are sorted
/// from the highest staff downward.
PageRows rowsOf(const PageFiles& page, const LoadedPages& files);

/// Finds the systems of the page, and numbers them from the top downward, on from base.
void findSystems(const PageFiles& files, std::int16_t& base, PageRows& page);

}  // namespace kiv::proof
