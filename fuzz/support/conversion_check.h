#pragma once

#include <string>

#include "fuzz/support/group_maker.h"
#include "platform/memory/overlay_files.h"

namespace kiv::fuzz {

/// The name of a system's result, beside the group's other files or in a folder of its own.
std::string resultName(const Group& group, int system);

/// Checks the report that an analysis left against the group, and the verdict against the report.
void checkAnalysis(OverlayFiles& files, const Group& group);

/// Checks the results of a successful conversion against report and group. The group must be unchanged. Returns the
/// number of results.
int checkConversion(OverlayFiles& files, const Group& group);

/// Whether the results qualify as they stand: all have the same instruments on the staves 1, 2, 3 ..., one staff item
/// each; none is hidden; and no brace of the lowest staff has a kind above the number of staves, which the analysis
/// takes for a span.
bool qualify(OverlayFiles& files, const Group& group, int results);

}  // namespace kiv::fuzz
