#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "analysis/analysis_observer.h"
#include "analysis/first_clef_table.h"
#include "analysis/page_table.h"
#include "analysis/read_bar_data.h"
#include "mus/item_table.h"
#include "platform/machine.h"

namespace kiv {

/// Loads the pages of an analysis, one after the other.
class PageReader {
 public:
  /// The observer, if any, is given the files and items that are read.
  PageReader(Files& files, User& user, Machine& machine, AnalysisObserver* observer = nullptr)
      : barData_(files, user, machine, observer), machine_(machine) {}

  /// Loads a page into the table: the files of a multifile page from the last letter to the first, stacked into one
  /// system, or the one file. A page name without a folder lies in resultFolder, which ends with a backslash. Returns
  /// the name of the top file.
  std::string read(const PageEntry& page, const std::string& resultFolder, ItemTable& table,
                   FirstClefTable& firstClefs);

 private:
  std::string readMultifilePage(const PageEntry& page, ItemTable& table, FirstClefTable& firstClefs);

  BarDataReader barData_;
  Machine& machine_;
};

/// The systems of one page: first to last, numbered on from page to page; last is first - 1 for a page without any.
struct PageSystems {
  int first = 1;
  int last = 0;
};

/// Gives the staves of a sorted and marked page their system numbers, the top system of the page the lowest, and
/// raises systemBase by the number of systems. A count that 16 bits do not hold ends the program.
PageSystems numberSystems(ItemTable& table, const std::vector<int>& staves, std::int16_t& systemBase);

}  // namespace kiv
