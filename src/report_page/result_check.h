#pragma once

#include <string>
#include <vector>

#include "diagnostics/system_facts.h"
#include "report_page/gather_report.h"

namespace kiv::report {

/// Why the results of a conversion are not those of these systems, a sentence each as UTF-8: one is missing, too many
/// or damaged, lacks an instrument of the group, has one that it must not have, or does not hold what is on the staves
/// of its system. None: they are. Their names follow from the full one of the first. Pages are read from the files,
/// which may have them corrected. Rest staves, barlines and braces are not compared.
std::vector<std::string> resultMisfits(const ReportHost& host, Files& files, const std::string& firstResult,
                                       const std::vector<SystemFact>& systems);

}  // namespace kiv::report
