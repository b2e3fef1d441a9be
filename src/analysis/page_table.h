#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "input/names_table.h"
#include "platform/host.h"

namespace kiv {

/// One page of the piece: a file, or the files that differ in their page letter only.
struct PageEntry {
  /// Of a multifile page: name, number and suffix, without letter and folder. Of a single file: its name, with the
  /// folder only where the letters after its number are part of its name.
  std::string pageName;
  /// The page letters in the order of selection; empty for a single-file page.
  std::string pageLetters;
  /// The folder of the files, with its backslash.
  std::string pagePath;

  bool isMultifile() const { return !pageLetters.empty(); }
  bool operator==(const PageEntry&) const = default;
};

/// The full names of a page's files in the order in which an analysis reads them: from the last letter to the first, so
/// that the top one comes last.
std::vector<std::string> filesOf(Machine& machine, const PageEntry& page);

/// The pages of a run, in order of selection.
struct PageTable {
  std::vector<PageEntry> pages;
  std::int16_t multifileCount = 0;  ///< pages with letters
};

/// Groups the selected files into pages. A name that does not follow the convention ends the program. Page letters
/// that are not A, B, C ... are reported.
PageTable groupPages(const Host& host, const NamesTable& names);

}  // namespace kiv
