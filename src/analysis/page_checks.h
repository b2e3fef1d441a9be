#pragma once

#include <cstdint>
#include <string>

#include "analysis/page_systems.h"
#include "mus/item_table.h"
#include "platform/host.h"

namespace kiv {

/// What is wrong with the systems of one page. Lists end with their separator.
struct PageProblems {
  std::int16_t dupIdCount = 0;
  std::int16_t dupStaffCount = 0;
  std::int16_t recursiveCueCount = 0;
  std::int16_t zeroIdCount = 0;
  std::int16_t undefinedCueCount = 0;
  std::string duplicateIds;     ///< "101,104,"
  std::string duplicateStaves;  ///< "2,"
  std::string undefinedCues;    ///< "105 in staff 3, "

  bool operator==(const PageProblems&) const = default;
};

/// Checks a page whose staves have their system numbers. musFileName is what a run-time error names: more recursive
/// cues than 16 bits count, or an undefined cue looked for with the table full.
PageProblems checkPage(Host& host, const std::string& musFileName, const ItemTable& table, const PageSystems& systems);

/// Shows a message for each kind of problem. musFileName is the top file of a multifile page.
void showProblems(Host& host, const PageProblems& problems, bool multifile, bool allowZeroInstrId,
                  const std::string& musFileName);

}  // namespace kiv
