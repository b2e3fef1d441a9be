#pragma once

#include "apps/kivsys/selection/selection.h"

namespace kiv {

enum class ListFormat { table, csv, json };

/// What the user asked of a list of instruments.
struct InstrumentsOptions {
  Selection selection;
  ListFormat format = ListFormat::table;
  bool allowZeroId = false;
  bool keepGoing = false;  ///< skip pages that an analysis would end over
};

/// Analyzes the selected pages and lists their instruments. Writes no file. Returns the program's exit status.
int runInstruments(const InstrumentsOptions& options);

}  // namespace kiv
