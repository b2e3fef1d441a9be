#pragma once

#include <optional>
#include <string>
#include <vector>

#include "apps/kivsys/commands/dry_run.h"
#include "apps/kivsys/commands/run_outcome.h"
#include "apps/kivsys/commands/valid_pages.h"
#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/layout/listed_conversion.h"
#include "apps/kivsys/output/warnings_output.h"
#include "apps/kivsys/safety/old_results.h"
#include "diagnostics/problems.h"

namespace kiv {

/// What a conversion prints, and whether it ended normally.
struct ConvertOutput {
  RunOutcome outcome;
  std::vector<Problem> problems;
  Warnings warnings;
  bool refused = false;                 ///< not converted because of the warnings
  int failure = exit_status::critical;  ///< the status of a run that did not end normally
  /// Of a dry run, what it did not write to the disk; nullopt otherwise.
  std::optional<std::vector<PlannedResult>> planned;
  std::vector<Instrument> instruments;       ///< of a dry run
  const ListedConversion* listed = nullptr;  ///< of a run with a table of instruments; else null
  const ValidPages* pages = nullptr;         ///< of a run that skips bad pages; else null
  OldResults oldResults;                     ///< what has become of those that were there before
  FileNamer nameOf;                          ///< how people are shown the name of a file
  std::optional<std::string> next;           ///< the command line that helps
  bool isNextPrinted = false;                ///< with the message about a damaged page
};

/// Prints the outcome, as JSON or for people. Returns the program's exit status.
int print(const ConvertOutput& output, bool json);

}  // namespace kiv
