#pragma once

#include <string>

#include "apps/kivsys/commands/run_outcome.h"

namespace kiv {

/// The lines that say, after a conversion that has written no results as none were needed, that this is so, and what to
/// do to have them; "" when there is nothing to say.
std::string noResultsNote(const RunOutcome& outcome);

}  // namespace kiv
