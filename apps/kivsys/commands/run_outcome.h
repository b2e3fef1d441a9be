#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "apps/kivsys/output/print_outcome.h"
#include "diagnostics/problems.h"
#include "messages/console_words.h"
#include "platform/console/console_host.h"
#include "platform/console/path_table.h"
#include "shell/kivsystem.h"
#include "verify/verify.h"

namespace kiv {

/// How an analysis ended, and its results. What it did not reach is empty.
struct RunOutcome {
  bool normalEnd = false;
  std::vector<ShownMessage> messages;
  std::optional<bool> consistency;
  std::optional<bool> multifile;
  std::int16_t files = 0;
  std::optional<std::size_t> systems;
  std::optional<std::size_t> instruments;
  bool verifies = false;                            ///< the conversion was to be proved
  std::optional<proof::Verification> verification;  ///< only of a conversion that ended and was to be proved
  FilePaths paths;                                  ///< where the pages are; none of a run like the panel's
  const PathTable* created = nullptr;               ///< the pages written, in order; null unless a run writes pages

  const PageCorrections* corrections = nullptr;  ///< with which the pages were read; of the console

  /// True when no conversion is needed.
  bool qualifies() const { return consistency.value_or(false) && !multifile.value_or(true); }
};

/// Runs a procedure of the program, and shows the critical message that ends it. False when one did.
bool endsNormally(ConsoleHost& console, const std::function<void()>& run);

/// Waits until the names of the pages written are on the disk. False when that fails, which is said on standard error.
bool flushResults(ConsoleHost& console);

/// Whether the message of an analysis is about a problem, such as an identifier of 0, after which results are
/// unpredictable.
bool isProblem(const Message& message);

/// The outcome of an analysis that has filled the program's tables.
RunOutcome outcomeOf(const KivSystem& program, const ConsoleHost& console, bool normalEnd);

/// The outcome of a run that continues after its analysis and writes pages.
RunOutcome withPagesWritten(RunOutcome analysis, const ConsoleHost& console, bool normalEnd);

/// The outcome of a run that writes pages without an analysis.
RunOutcome writingOutcomeOf(const NamesTable& names, const ConsoleHost& console, bool normalEnd);

/// The problems that the messages of a run are about.
std::vector<Problem> problemsOf(Files& files, const RunOutcome& outcome);

/// The verdict and the counts, a line each; "" when the analysis did not reach them.
std::string asText(const RunOutcome& outcome);

/// How files are named in what people read: as they would type them, or by the core's names as the window has them. The
/// console must outlive it.
FileNamer namerOf(ConsoleHost& console, bool likePanel);

/// A note for each gap in the numbers of the pages of a run, a line each.
std::string gapNotes(ConsoleSystem& system);

/// The pages written, a line each.
std::string createdLines(const RunOutcome& outcome, const FileNamer& nameOf);

}  // namespace kiv
