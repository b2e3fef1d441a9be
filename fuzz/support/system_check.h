#pragma once

#include "fuzz/support/expected_system.h"
#include "fuzz/support/items.h"

namespace kiv::fuzz {

/// Checks the items of a result against its expected staves.
void checkSystem(const ExpectedSystem& system, const Items& result, bool showsNumbers);

}  // namespace kiv::fuzz
