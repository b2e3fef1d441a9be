#pragma once

#include <string>
#include <vector>

#include "apps/kivsys/selection/selected_pages.h"

namespace kiv {

/// Why the sorted pages of these pages cannot be written: one of them is an input or a device, or would replace that of
/// another page, selected or not. None: they can.
std::vector<std::string> refusalsOfSortedPages(ConsoleSystem& system, const SelectedPages& pages);

}  // namespace kiv
