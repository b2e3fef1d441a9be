#pragma once

#include <cstddef>
#include <memory>

#include "diagnostics/group_facts.h"
#include "report_page/gather_report.h"

namespace kiv::report {

/// A group as a table of corrections makes it.
struct CorrectedGroup {
  GroupFacts facts{WantedFacts()};
  std::size_t problems = 0;
  bool qualifies = false;  ///< it can be used without a conversion
};

/// Analyzes the pages of the request in memory, from files that have them corrected. Null when that ends early.
std::unique_ptr<const CorrectedGroup> analyzeCorrected(Files& corrected, const ReportHost& host,
                                                       const ReportRequest& request);

}  // namespace kiv::report
