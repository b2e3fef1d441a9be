#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "analysis/report_index.h"
#include "platform/machine.h"

namespace kiv {

/// What a system has of an instrument.
enum class Presence : std::uint8_t {
  missing,    ///< nothing; a conversion inserts a rest staff
  present,    ///< one staff
  duplicate,  ///< several staves
  zeroId,     ///< staves without an instrument identifier
};

inline constexpr std::size_t presenceKinds = 4;

/// A system of a group.
struct ChartSystem {
  std::size_t page = 0;         ///< its index in Chart::pages
  bool inOrder = true;          ///< its identifiers rise from the top staff down, as in a result
  std::vector<Presence> cells;  ///< for every instrument of the chart
  std::vector<bool> moved;  ///< for every instrument, whether a conversion moves its staff; empty when it moves none

  bool isMoved(std::size_t instrument) const { return instrument < moved.size() && moved[instrument]; }
};

/// Where the suffix of a file name begins; the length of a name without one.
std::size_t dotOf(const std::string& name);

/// A page of a group that has systems.
struct ChartPage {
  std::string name;             ///< without folder; of a multifile page the first file's, with all page letters
  std::size_t files = 1;        ///< more than 1 for a multifile page
  std::size_t firstSystem = 0;  ///< its index in Chart::systems
};

/// What an instrument is called.
struct ChartName {
  std::string text;         ///< shortened for a terminal
  std::size_t columns = 0;  ///< that the text fills on a terminal
  std::string full;         ///< the name as it is; "" when the text is the name
};

/// Which instruments the systems of a group have.
struct Chart {
  std::string piece;                        ///< the name part of its first page; may be empty
  std::vector<std::int16_t> instruments;    ///< from the top of a result to its bottom
  std::map<std::int16_t, ChartName> names;  ///< of those that have one; makeChart knows none
  std::vector<ChartPage> pages;             ///< in order
  std::vector<ChartSystem> systems;         ///< in order; system 1 comes first

  bool startsPage(std::size_t system) const { return pages[systems[system].page].firstSystem == system; }
  std::size_t count(Presence presence) const;
  /// The columns that the longest name fills; 0 without names.
  std::size_t nameColumns() const;
  bool hasMovedStaves() const;
  bool hasMultifilePages() const;
  /// "7 systems on 5 pages, 12 instruments; 46 rest staves to be inserted"
  std::string counts() const;
  /// The counts with the piece in front: "SYMPH: 7 systems on 5 pages, 12 instruments; 46 rest staves to be inserted"
  std::string summary() const;
  /// The systems from the first to before the end whose staves stand in another order than in a result, as "3, 5", the
  /// first twelve by number; "" when there are none.
  std::string outOfOrder(std::size_t first, std::size_t end) const;
  std::string outOfOrder() const { return outOfOrder(0, systems.size()); }
};

/// The chart of an analyzed group. With allowZeroId a staff without an identifier is like any other. A record of the
/// report that cannot be read ends the program.
Chart makeChart(Machine& machine, const ReportIndex& report, bool allowZeroId);

/// The legend's text for a kind of cell.
const char* meaningOf(Presence presence);
/// The legend's text for a staff that a conversion moves.
inline constexpr const char* meaningOfMoved = "staff that a conversion moves";

}  // namespace kiv
