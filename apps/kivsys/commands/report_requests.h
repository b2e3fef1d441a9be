#pragma once

#include <optional>
#include <string>
#include <vector>

#include "apps/kivsys/output/suggestions_output.h"
#include "apps/kivsys/selection/selection.h"
#include "platform/console/message_words.h"
#include "report_page/gather_report.h"

namespace kiv {

/// The arguments that select the same pages, each after a blank: a pattern for many pages that are all of their kind in
/// their folder, else what was typed.
std::string shortArguments(ConsoleSystem& system, const Selection& selection);

/// The command line as a report has it; "" when a name in it cannot be shown.
std::string shownCommand(const std::string& line);

/// What a report says about a page that cannot be read.
report::PageStep pageStep(const SkippedPage& page, const MessageFile& file);

/// A pattern for the pages, names of the core with their paths on the disk, where there is one; its folder is as in the
/// path of the first.
std::optional<std::string> patternFor(NativeSystem& system, const std::vector<FoundFile>& pages);

/// A folder with its separator, and a pattern for names in it with one asterisk, as a word of a command line that the
/// system's shell or the program itself expands; "" when the pattern has other characters that a shell changes.
std::string patternWord(const std::string& folder, const std::string& pattern);

/// The rows of a table of corrections, as a report shows them, or what is wrong with the table, a line each.
struct TableProposals {
  std::vector<report::ReportProposal> proposals;
  std::vector<std::string> errors;
};

/// Reads the table, a full name. Without a name there are none.
TableProposals readProposals(ConsoleSystem& system, const std::string& file);

/// A file in a new folder for temporary files, which only the user can enter; "" when it cannot be made.
std::string temporaryReport(NativeSystem& system);

}  // namespace kiv
