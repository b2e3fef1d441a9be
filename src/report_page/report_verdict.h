#pragma once

#include "report_page/gather_report.h"

namespace kiv::report {

/// Puts the verdict into words, and decides on the one next step.
void addVerdict(const ReportRequest& request, ReportData& data);

}  // namespace kiv::report
