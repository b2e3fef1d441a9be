#pragma once

#include <vector>

#include "diagnostics/instruments.h"
#include "diagnostics/layouts.h"
#include "report_page/gather_report.h"

namespace kiv::report {

/// Adds the layouts in words, and of which layout each system is. The chart's names must be there.
void addLayouts(const Layouts& layouts, ReportData& data);

/// Adds the table of instruments.
void addInstruments(const ReportHost& host, const std::vector<Instrument>& instruments, ReportData& data);

}  // namespace kiv::report
