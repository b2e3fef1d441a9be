#pragma once

#include <string>
#include <vector>

#include "apps/kivsys/output/outcome_json.h"
#include "diagnostics/layouts.h"
#include "diagnostics/problems.h"

namespace kiv {

/// A problem as an object, with the path of its file among these; what is not certain is null. Without paths, as in a
/// run like the panel's, it has none.
Json jsonOf(const Problem& problem, const std::vector<FoundFile>& paths);
/// One layout as an object, without its deviations.
Json jsonOf(const Layouts& layouts, const LayoutClass& layout);
/// A deviation of a layout as an object.
Json jsonOf(const Layouts& layouts, const Deviation& deviation);
/// All layouts as one array, with their deviations.
Json jsonOf(const Layouts& layouts);

/// A whole number without a fraction, others as they are.
Json numberJson(double number);

}  // namespace kiv
