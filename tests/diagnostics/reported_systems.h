#pragma once

#include <vector>

#include "diagnostics/system_facts.h"
#include "platform/files.h"

namespace kiv::test {

/// The systems that the report in the current folder lists, in the order in which they first appear: what the facts
/// about a group must say, too.
std::vector<SystemFact> reportedSystems(Files& files);

}  // namespace kiv::test
