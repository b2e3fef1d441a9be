#pragma once

#include <cstdint>
#include <set>
#include <string>

#include "apps/kivsys/output/warnings_output.h"
#include "diagnostics/warnings.h"
#include "platform/console/console_host.h"
#include "shell/kivsystem.h"

namespace kiv {

/// A run that --strict can refuse.
struct StrictRun {
  bool allowZeroId = false;
  bool converts = false;              ///< pages that do not qualify are converted
  bool force = false;                 ///< and those that do
  std::set<std::int16_t> required{};  ///< instruments that every result gets
};

/// Whether an analysis of the names file, in memory, finds a warning or a problem. One that ends early finds none: the
/// run itself shows why.
bool isRefusedByStrict(ConsoleSystem& system, const std::string& namesFile, const StrictRun& run);

/// Finds what the run after the analysis that has filled the program's tables, observed by the facts, loses, and shows
/// it to the user. The problems are filled in on request.
Warnings showWarnings(ConsoleUser& user, KivSystem& program, GroupFacts& group, const WarnedRun& run,
                      bool withProblems);
/// Shows these warnings to the user. The problems are filled in on request.
Warnings showWarnings(ConsoleUser& user, Files& files, std::vector<Message> messages, bool withProblems);

}  // namespace kiv
