#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/console/console_host.h"

namespace kiv {

/// What the user selected, names as they were typed: a names file, or page files.
struct Selection {
  std::string folder;              ///< the run's current folder; "" is the one the program was started in
  std::string names;               ///< the names file; "" when pages are given
  std::vector<std::string> pages;  ///< the page files; empty when a names file is given
};

/// Enters the run's folder and runs a command on the names file of the selection; one made from page names is deleted
/// afterwards. Returns the command's exit status, or that of a selection that cannot be used.
int runOnSelection(ConsoleHost& console, const Selection& selection,
                   const std::function<int(const std::string& namesFile)>& run);

}  // namespace kiv
