#pragma once

#include <functional>
#include <string>

#include "apps/kivsys/selection/selection.h"

namespace kiv {

/// The same as runOnSelection, in the way of the panel: the names file is the user's own, and is deleted over a name
/// that cannot be used; one made from page names is a temporary one.
int runLikePanel(ConsoleHost& console, const Selection& selection,
                 const std::function<int(const std::string& namesFile)>& run);

}  // namespace kiv
