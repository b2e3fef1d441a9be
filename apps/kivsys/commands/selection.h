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

/// The folders that a run writes into, which no other run may do at the same time.
struct WrittenFolders {
  bool report = false;  ///< the run's current folder
  bool results = false;
  std::string firstResult;  ///< full name of the first result; "" puts the results beside the pages
  bool wait = false;        ///< for a run that works in one of them
};

/// Enters the run's folder, locks those that the run writes into, and runs a command on the names file of the
/// selection; one made from page names is deleted afterwards. Returns the command's exit status, or that of a selection
/// that cannot be used. A signal stops the command between two files; then what it has written is said, and the status
/// is 128 + signal.
int runOnSelection(ConsoleHost& console, const Selection& selection,
                   const std::function<int(const std::string& namesFile)>& run, const WrittenFolders& written = {});

}  // namespace kiv
