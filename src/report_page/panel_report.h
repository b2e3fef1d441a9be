#pragma once

#include <functional>
#include <string>

#include "report_page/gather_report.h"
#include "shell/analyzed_group.h"

namespace kiv::report {

/// A word of a command line, as UTF-8, for a name of a file or a pattern for such names.
using CommandWord = std::function<std::string(const std::string& text)>;

/// The report about the group that the panel has analyzed, as its pages are now. After a conversion whose results are
/// still there it shows them, too.
GatheredReport panelReport(const ReportHost& host, const AnalyzedGroup& group, const CommandWord& word,
                           const CsvWriter& csv);

}  // namespace kiv::report
