#pragma once

#include <string>
#include <vector>

#include "diagnostics/system_facts.h"
#include "report_page/gather_report.h"

namespace kiv::report {

/// Why the results of a conversion are not those of these systems, a sentence each as UTF-8: one is missing, too many
/// or damaged, or lacks an instrument of the group. None: they may be. Their names follow from the full one of the
/// first. What the staves hold is not compared.
std::vector<std::string> resultMisfits(const ReportHost& host, const std::string& firstResult,
                                       const std::vector<SystemFact>& systems);

}  // namespace kiv::report
