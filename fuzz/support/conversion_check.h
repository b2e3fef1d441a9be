#pragma once

#include <string>

#include "fuzz/support/group_maker.h"
#include "fuzz/support/memory_host.h"

namespace kiv::fuzz {

/// The name of a system's result, beside the group's other files or in a folder of its own.
std::string resultName(const Group& group, int system);

/// Holds the report that an analysis left against the group, and the verdict against the report.
void checkAnalysis(const MemoryHost& host, const Group& group);

/// Holds the results that a conversion left against report and group, after a run that ended in good order. The group
/// must have been left alone. Returns how many results there are.
int checkConversion(MemoryHost& host, const Group& group);

/// Whether the results qualify as they stand: all have the same instruments on the staves 1, 2, 3 ..., one staff item
/// each; none is hidden; and no brace of the lowest staff has a kind above the number of staves, which the analysis
/// takes for a span.
bool qualify(const MemoryHost& host, const Group& group, int results);

}  // namespace kiv::fuzz
