#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "diagnostics/page_validation.h"
#include "platform/files.h"
#include "platform/machine.h"
#include "platform/user.h"
#include "repair/suggestions.h"
#include "report_page/report_data.h"

namespace kiv::report {

/// What surrounds a run that gathers a report. All must outlive it.
struct ReportHost {
  Files& files;  ///< is read only
  Machine& machine;
  User& user;  ///< sees the progress and no message
  /// A text of the pages in UTF-8, on one line, with nothing in it that hides or moves other text.
  std::function<std::string(const std::string& text)> shown;
  /// The name of a page file as users know it, of its full name.
  std::function<std::string(const std::string& file)> nameOf;
};

/// What to do about a page that cannot be read.
struct PageStep {
  std::string command;   ///< as UTF-8; "" when there is none
  std::string mistaken;  ///< what the file is instead of a page, as UTF-8; "" when it is a page
};

/// The parts of command lines about the same pages, as the system names files. All but the file names come after a
/// blank.
struct CommandParts {
  /// Selects the pages, in their order. None: no other run can read the same.
  std::optional<std::string> pages;
  std::string zeroIds;    ///< the option that accepts staves without an id, if it was given; few commands have it
  std::string newResult;  ///< the option for the first result of a conversion, where there is none yet
  std::string newFolder;  ///< a folder for corrected pages that is not there yet
  std::string result;     ///< the option for the first result of the conversion that is shown
  std::string table;      ///< the option that reads the pages with the reader's table of corrections
  std::string report;     ///< the options that make this report again
  /// The command line as UTF-8; "" when it cannot be shown on one line. None: it is UTF-8 that may be shown.
  std::function<std::string(const std::string& line)> shown;
};

/// A table of corrections that the reader has.
struct GivenTable {
  std::string name;                          ///< as UTF-8 that may be shown
  std::vector<ReportProposal> proposals;     ///< its rows
  std::map<std::string, std::string> pages;  ///< those that it changes, as it makes them, by their full names
};

/// What a report is to be about.
struct ReportRequest {
  std::string namesFile;  ///< lists the pages; "" when none can be analyzed
  bool allowZeroId = false;
  bool allPictures = false;  ///< not only those of systems with deviations and problems
  bool isForPanel = false;   ///< the reader is in front of the window
  CommandParts commands;
  std::function<PageStep(const SkippedPage& page)> stepAfter = {};  ///< a page that is left out
  std::string firstResult;                                          ///< full name; "" without results
  std::optional<GivenTable> table = {};                             ///< no other proposals are made then
  std::vector<SkippedPage> skipped = {};                            ///< pages that are left out
};

/// Writes tables of corrections.
struct CsvWriter {
  std::string head;  ///< the first line, with its end
  /// The line of a correction, with its end, in UTF-8.
  std::function<std::string(const Correction& correction)> line;
};

/// A gathered report; the message is the critical one that has ended the analysis, if one has.
struct GatheredReport {
  ReportData data;
  std::optional<Message> ended;
  bool hasFindings = false;  ///< a problem or a warning
};

/// Analyzes the pages in memory and gathers all that a report shows of them.
GatheredReport gatherReport(const ReportHost& host, const ReportRequest& request, const CsvWriter& csv);

/// The full name of the result of a system, from that of the first one, which ends in 0001 and four more characters.
std::string resultName(const std::string& firstResult, std::size_t number);

}  // namespace kiv::report
