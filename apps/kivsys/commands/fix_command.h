#pragma once

#include <string>
#include <vector>

#include "apps/kivsys/corrections/correction_tables.h"
#include "apps/kivsys/selection/selection.h"

namespace kiv {

/// What was asked of `kivsys fix`, as it was typed. With a table of instruments in the selection, their ids are changed
/// so that they rise in its order.
struct FixOptions {
  Selection selection;
  TableOptions corrections;
  std::vector<std::string> sets;  ///< PAGE:STAFF=ID
  std::vector<std::string> maps;  ///< OLD=NEW
  std::string out;                ///< the folder of the corrected pages
  bool inPlace = false;           ///< write over the pages themselves, which can be undone
  bool force = false;             ///< replace pages that are there
  bool noUndo = false;            ///< write no journal
  bool dryRun = false;
  bool json = false;
};

/// Writes corrected pages into a folder, and prints what has changed in them. Returns the program's exit status.
int runFix(const FixOptions& options);

}  // namespace kiv
