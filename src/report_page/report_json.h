#pragma once

#include <string>

#include "report_page/report_data.h"

namespace kiv::report {

/// What the script of a report reads, as JSON that may stand in a script element.
std::string reportJson(const ReportData& data);

/// The chart alone: instruments with their cells, pages and layouts.
std::string chartJson(const ReportData& data);

}  // namespace kiv::report
