#pragma once

#include <string>

#include "report_page/report_data.h"

namespace kiv::report {

/// How every report begins; by this a file is known to be one.
inline constexpr const char* pageStart = "<!DOCTYPE html>\n<html lang=\"en\" data-made-by=\"kivsys\">";

/// The report as one page that needs nothing but itself.
std::string reportPage(const ReportData& data);

}  // namespace kiv::report
