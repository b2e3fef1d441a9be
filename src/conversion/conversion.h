#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "analysis/first_clef_table.h"
#include "analysis/report_index.h"
#include "conversion/barlines.h"
#include "conversion/braces.h"
#include "conversion/fitted_staves.h"
#include "conversion/order_table.h"
#include "conversion/read_staff.h"
#include "conversion/required_instrument.h"
#include "mus/item_table.h"
#include "platform/files.h"

namespace kiv {

/// The tables that a conversion works on. They live as long as the program, as some of what a conversion leaves in them
/// counts for the next one.
struct ConversionTables {
  ItemTable& items;
  OrderTable& order;
  FirstClefTable& firstClefs;
};

/// One conversion of a group: what is read once for all its systems, and what one system adds for those after it.
class Conversion {
 public:
  /// Reads the report, and orders the instruments as it names them. A report that cannot be read ends the program. The
  /// files and the tables must outlive the conversion. For rest staves that fit the music all systems are read here,
  /// and one that cannot be read ends the program.
  Conversion(Files& files, const ConversionTables& tables, RestStaves restStaves = RestStaves::asKnownSoFar);

  /// Adds an instrument to all results, after those of the report, unless the report has it.
  void require(const RequiredInstrument& instrument);

  /// The systems are numbered from 1 to this.
  int systemCount() const { return report_.systemCount(); }

  /// Makes the item table hold the system with a staff for every instrument: reads its staves, remembers what later
  /// rest staves will copy, adds rest staves for the instruments that are missing, and gives all staves the same
  /// barlines. A system that cannot be converted so ends the program.
  void convertSystem(std::int16_t system);

  /// Puts the staves in the order of their instruments and adds the braces: the table is ready to be written.
  void finishSystem();

  /// A page file was replaced. It is read again when more of its staves are needed.
  void fileWasReplaced() { pages_.clear(); }

 private:
  void learnGroup();
  BarlineList readSystem(const std::vector<StaffRecord>& staves, std::int16_t system);
  void readStaves(const std::vector<StaffRecord>& staves);
  void addMissing(std::int16_t system, const BarlineList& barlines);
  void checkStaves(std::int16_t system);
  void closeSingleStaff(int staff);
  void countPresent();
  void dropFinishedPages(const std::vector<StaffRecord>& staves, std::int16_t system);

  ConversionTables tables_;
  ReportIndex report_;
  PageCache pages_;
  BraceTable braces_;
  std::optional<FittedStaves> fitted_;
};

/// Shows every staff's instrument identifier at its left end.
void showInstrumentNumbers(ItemTable& items);

}  // namespace kiv
