#pragma once

#include <map>
#include <string>

#include "apps/kivsys/output/outcome_json.h"
#include "platform/console/console_system.h"
#include "repair/correction_line.h"
#include "repair/suggestions.h"

namespace kiv {

/// The names of the page files of a selection, as the user sees them on the disk.
class SelectedNames {
 public:
  explicit SelectedNames(ConsoleSystem& system);

  /// The name of a page that the core names: without its folder, unless two pages of the selection have it.
  std::string of(const std::string& coreName) const;

 private:
  ConsoleSystem& system_;
  std::map<std::string, std::string> names_;  // by the core's name in upper case
};

/// The line of a correction in comma-separated values in UTF-8, with its end; the name is that of the page file.
std::string correctionLine(const Correction& correction, const std::string& name);

/// The corrections as comma-separated values in UTF-8, with a line of heads.
std::string correctionsCsv(const Suggestions& suggestions, const SelectedNames& names);

/// The corrections, and what is left undecided, as tables for a terminal.
std::string suggestionTables(const Suggestions& suggestions, const SelectedNames& names);

/// Each as one array.
Json correctionsJson(const Suggestions& suggestions, const SelectedNames& names);
Json undecidedJson(const Suggestions& suggestions, const SelectedNames& names);

}  // namespace kiv
