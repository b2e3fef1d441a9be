#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "diagnostics/system_facts.h"
#include "report_page/gather_report.h"

namespace kiv::report {

/// A group as a table of corrections makes it.
struct CorrectedGroup {
  std::vector<SystemFact> systems;
  std::size_t problems = 0;
  bool qualifies = false;  ///< it can be used without a conversion
};

/// Analyzes the pages of the request in memory, from files that have them corrected. nullopt when that ends early.
std::optional<CorrectedGroup> analyzeCorrected(Files& corrected, const ReportHost& host, const ReportRequest& request);

}  // namespace kiv::report
