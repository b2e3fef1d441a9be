#pragma once

#include <cstdint>
#include <string>

#include "analysis/first_clef_table.h"
#include "analysis/page_table.h"
#include "mus/item_table.h"
#include "mus/reader.h"
#include "platform/host.h"

namespace kiv {

/// Loads a page into the table: the files of a multifile page from the last letter to the first, stacked into one
/// system, or the one file. musFileName goes through the files and ends on the top one. A page name without a folder
/// lies in resultFolder, which ends with a backslash.
void readPage(Host& host, const PageEntry& page, const std::string& resultFolder, std::string& musFileName,
              ItemTable& table, FirstClefTable& firstClefs, MusReader& reader);

/// The systems of one page: first to last, numbered on from page to page; last is first - 1 for a page without any.
struct PageSystems {
  int first = 1;
  int last = 0;
};

/// Gives the staves of a sorted and marked page their system numbers, the top system of the page the lowest, and
/// raises systemBase by the number of systems. A count that 16 bits do not hold ends the program.
PageSystems numberSystems(Host& host, const std::string& musFileName, ItemTable& table, std::int16_t& systemBase);

}  // namespace kiv
