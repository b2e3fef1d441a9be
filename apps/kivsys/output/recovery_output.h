#pragma once

#include <optional>
#include <string>
#include <vector>

#include "repair/recovery.h"

namespace kiv {

/// What a recovery is printed with.
struct RecoveryReport {
  std::string page;     ///< as it was typed
  std::string written;  ///< the path of the page that was written; "" for none
  bool dryRun = false;
  std::string shown = {};                  ///< the name of the page that was written, for people
  std::string mistaken = {};               ///< what the file is, if it never was a page
  std::vector<std::string> refusals = {};  ///< of a dry run: why the page would not be written
  std::optional<std::string> next = {};    ///< the command line to use then
};

/// What was kept and what was lost, for people.
std::string asText(const repair::Recovery& recovery, const RecoveryReport& report);

/// The same as one JSON object, a line.
std::string asJson(const repair::Recovery& recovery, const RecoveryReport& report);

}  // namespace kiv
