#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "analysis/page_systems.h"
#include "analysis/table_rows.h"
#include "messages/analysis_messages.h"
#include "mus/item_table.h"
#include "platform/user.h"

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

  // Where each of them is, with its item in its file.
  std::vector<Location> dupIdPlaces;
  std::vector<Location> dupStaffPlaces;
  std::vector<Location> zeroIdPlaces;
  std::vector<Location> recursiveCuePlaces;
  std::vector<Location> undefinedCuePlaces;

  bool operator==(const PageProblems&) const = default;
};

/// Checks a page whose staves have their system numbers. More recursive cues than 16 bits count end the program, as
/// does a cue marker on a page that fills the table.
PageProblems checkPage(const ItemTable& table, const TableRows& rows, const PageSystems& systems);

/// Shows a message for each kind of problem.
void showProblems(User& user, const PageProblems& problems, const messages::CheckedPage& page, bool allowZeroInstrId);

}  // namespace kiv
