#pragma once

#include <string>
#include <vector>

#include "apps/kivsys/corrections/correction_tables.h"
#include "apps/kivsys/selection/selected_pages.h"
#include "platform/console/console_system.h"

namespace kiv {

struct FixOptions;

/// Reads the corrections that a command line asks for: those of its tables, and its own.
IdRequests readRequests(ConsoleSystem& system, const FixOptions& options);

/// Why the pages cannot be replaced by corrected ones: one is also a table of corrections, the list of the pages, or
/// another page. None: they can.
std::vector<std::string> refusalsInPlace(ConsoleSystem& system, const FixOptions& options, const SelectedPages& pages);

}  // namespace kiv
