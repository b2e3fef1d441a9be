#pragma once

#include <cstddef>
#include <cstdint>
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

/// The pages of a selection, in the order of their first files. Of each no more is kept than which files it has.
class SelectedPages {
 public:
  /// Groups full names in upper case. Files whose names differ in the single letter after the number are one page. The
  /// names must outlive the pages.
  SelectedPages(Machine& machine, const std::vector<std::string>& inputs);

  /// A file with a name that no page file may have: there are no pages then.
  const std::optional<Finding>& failure() const { return failure_; }
  std::size_t size() const { return ends_.size(); }
  /// A page by its index.
  PageFiles page(std::size_t index) const;

 private:
  void divide(const std::vector<std::uint32_t>& pages, std::size_t count);

  Machine& machine_;
  const std::vector<std::string>& inputs_;
  std::vector<std::uint32_t> files_;  // indices of inputs, page by page
  std::vector<std::uint32_t> ends_;   // of each page in files_
  std::optional<Finding> failure_;
};

}  // namespace kiv::proof
