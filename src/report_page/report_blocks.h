#pragma once

#include <string>

#include "report_page/report_data.h"

namespace kiv::report {

// The parts of a report that can be read without its script, as HTML.

/// Pages, systems, instruments and the like, each with its number.
std::string countsBlock(const ReportData& data);
/// The one next step, as a command line and as steps in the window.
std::string nextStepBlock(const ReportData& data);
/// Which systems have which layout, as the rows of a table.
std::string layoutRows(const ReportData& data);
/// A section for each code, with all its places.
std::string problemsBlock(const ReportData& data);
/// A row for each instrument.
std::string instrumentRows(const ReportData& data);
/// A row for each proposal.
std::string proposalRows(const ReportData& data);

/// A line for each system that others refer to, as a list for readers without script.
std::string systemsWithoutScript(const ReportData& data);

/// An element with a text, which is escaped. The name may have attributes after it.
std::string element(const std::string& tag, const std::string& text);

}  // namespace kiv::report
