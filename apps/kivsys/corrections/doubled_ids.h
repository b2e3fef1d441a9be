#pragma once

#include <string>
#include <vector>

#include "apps/kivsys/corrections/planned_pages.h"
#include "apps/kivsys/output/fix_output.h"
#include "platform/console/console_host.h"

namespace kiv {

/// The new ids that stand twice in a system of the corrected pages, and did not before: by id. The pages, which the
/// names file lists, are analyzed in memory; of pages that cannot be, nothing is known.
std::vector<DoubledId> newlyDoubled(ConsoleHost& console, const std::string& namesFile,
                                    const std::vector<PlannedPage>& pages);

}  // namespace kiv
