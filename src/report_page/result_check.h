#pragma once

#include <string>
#include <vector>

#include "diagnostics/group_facts.h"
#include "report_page/gather_report.h"

namespace kiv::report {

/// Why the results are not those of the systems.
struct ResultMisfits {
  std::vector<std::string> sentences;  ///< as UTF-8; none: they are
  /// The number of the first system without a result, if those before it fit and no later one has any, as a conversion
  /// that ends early leaves them; 0 otherwise.
  std::size_t firstMissing = 0;
};

/// Why the results of a conversion are not those of the systems of these facts, a sentence each: one is missing, too
/// many or damaged, lacks an instrument of the group, has one that it must not have, or does not hold what is on the
/// staves of its system. Their names follow from the full one of the first. Pages are read from the files, which may
/// have them corrected. Rest staves, barlines and braces are not compared.
ResultMisfits resultMisfits(const ReportHost& host, Files& files, const std::string& firstResult,
                            const GroupFacts& facts);

}  // namespace kiv::report
