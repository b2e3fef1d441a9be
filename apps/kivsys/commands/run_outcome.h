#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/console/console_host.h"
#include "shell/kivsystem.h"
#include "verify/verify.h"

namespace kiv {

/// How an analysis ended, and what it found out. What it did not reach is empty.
struct RunOutcome {
  bool normalEnd = false;
  std::vector<ShownMessage> messages;
  std::optional<bool> consistency;
  std::optional<bool> multifile;
  std::int16_t files = 0;
  std::optional<std::size_t> systems;
  std::optional<std::size_t> instruments;
  bool verifies = false;                            ///< the conversion was to be proved
  std::optional<proof::Verification> verification;  ///< only of a conversion that was made and was to be proved
  std::optional<std::vector<std::string>> created;  ///< the pages written, in order; only of runs that write pages

  /// True when every system can go on as it stands, without a conversion.
  bool qualifies() const { return consistency.value_or(false) && !multifile.value_or(true); }
};

/// What the program object holds at the end of an analysis.
RunOutcome outcomeOf(const KivSystem& program, const ConsoleHost& host, bool normalEnd);

/// The outcome of a run that goes on after its analysis and writes pages.
RunOutcome withPagesWritten(RunOutcome analysis, const ConsoleHost& host, bool normalEnd);

/// What the host holds at the end of a run that writes pages and has no analysis.
RunOutcome writingOutcomeOf(const NamesTable& names, const ConsoleHost& host, bool normalEnd);

/// One JSON object in UTF-8 on a line of its own.
std::string asJson(const RunOutcome& outcome);
/// The verdict and the counts, a line each; "" when the analysis did not reach them.
std::string asText(const RunOutcome& outcome);

/// The pages written, a line each.
std::string createdLines(const RunOutcome& outcome);

/// Prints the outcome on standard output and returns the status; one that cannot be printed does not pass for success.
int printOutcome(const std::string& text, int status);

}  // namespace kiv
