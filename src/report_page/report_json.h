#pragma once

#include <string>

#include "report_page/report_data.h"

namespace kiv::report {

/// Appends what the script of a report reads, as JSON that may stand in a script element.
void addReportJson(const ReportData& data, std::string& json);

/// The chart alone: instruments with their cells, pages and layouts.
std::string chartJson(const ReportData& data);

}  // namespace kiv::report
