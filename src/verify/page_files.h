#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/machine.h"
#include "verify/finding.h"

namespace kiv::proof {

/// A page, as the head of the report lists it.
struct PageFiles {
  std::string name;                ///< without the letter of a page that several files make up
  std::string letters;             ///< of those files in the order of selection; empty for a single file
  std::string folder;              ///< ends with a backslash
  std::vector<std::string> files;  ///< full names in the order of selection

  /// Whether several files make it up. An analysis reads them from the last to the first.
  bool isMultifile() const { return !letters.empty(); }
};

/// The pages of a selection, in the order of their first files.
struct SelectedPages {
  std::vector<PageFiles> pages;
  std::optional<Finding> failure;  ///< a file with a name that no page file may have
};

/// Groups full names in upper case. Files whose names differ in the single letter after the number are one page.
SelectedPages pagesOf(Machine& machine, const std::vector<std::string>& inputs);

}  // namespace kiv::proof
