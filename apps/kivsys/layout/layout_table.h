#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "apps/kivsys/selection/selected_pages.h"
#include "repair/layout_file.h"
#include "repair/listed_look.h"

namespace kiv {

/// A table of instruments that was given with --layout.
struct LayoutTable {
  std::string path;    ///< on the disk; "" for a run without a table
  std::string sha256;  ///< of its bytes
  std::vector<ListedInstrument> instruments;
  std::vector<ListedLook> looks;  ///< of the same instruments
};

/// What is read of a table.
enum class LayoutCells {
  names,  ///< ids and names
  all,    ///< also what staves look like, in which an error is one of the table
};

/// Reads the table that was typed, if one was. Returns what is wrong with it, a line each.
std::vector<std::string> readLayoutTable(ConsoleSystem& system, const std::string& typed, LayoutCells cells,
                                         LayoutTable& table);

/// The path of the table on the disk; "" when none was typed.
std::string pathOfLayout(ConsoleSystem& system, const std::string& typed);

/// The selected pages and a table of instruments side by side.
struct ListedPages {
  std::vector<std::string> unlisted;  ///< a line for each id of the pages that is not listed, with its places
  std::set<std::int16_t> silent;      ///< listed ids that no page has
};

/// Why the pages do not fit the table: the lines about its unlisted ids, and one that says what to do.
std::vector<std::string> refusalsOf(const ListedPages& pages, const LayoutTable& table);

/// Looks at the staves of all pages that can be read. Staves without an id need not be listed if that is allowed.
ListedPages compareWithTable(ConsoleSystem& system, const LayoutTable& table, bool allowZeroId);

/// The lines that say which instruments are silent, and that the table has another order than the results; "" for none.
std::string layoutNotes(ConsoleSystem& system, const LayoutTable& table, const std::set<std::int16_t>& silent);

}  // namespace kiv
