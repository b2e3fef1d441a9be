#pragma once

#include "repair/suggestions.h"
#include "report_page/gather_report.h"

namespace kiv::report {

/// Adds what is proposed for wrong ids; what is sure is accepted beforehand.
void addProposals(const ReportHost& host, const CsvWriter& csv, const Suggestions& suggestions, ReportData& data);

}  // namespace kiv::report
