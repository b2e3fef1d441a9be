#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "apps/kivsys/safety/input_files.h"
#include "platform/console/console_host.h"

namespace kiv {

/// The first result that was typed: of a folder, or of what can only be one as it ends with a separator, the first
/// result in there, WORK0001.MUS.
std::string resultIn(const std::string& typed);

/// Why a name that was typed cannot be that of a first result; nullopt when it can be.
std::optional<std::string> refusalOfResultName(const std::string& typed);

/// The first result of a conversion unless another one is named: beside the first page.
std::string defaultResultFile(ConsoleSystem& system, const FoundFile& firstPage);

/// A file that has the name of a result.
struct NamedResult {
  std::size_t number = 0;
  std::string name;  ///< full, as the core writes it
};

/// The files that are there under names of results of a conversion with this first one, a full name, by their numbers.
std::vector<NamedResult> resultsThere(ConsoleSystem& system, const std::string& firstResult);

/// The number of the result of that full name, in a conversion with this first one; 0 when it is none.
std::size_t numberOfResult(ConsoleSystem& system, const std::string& firstResult, const std::string& name);

/// The results that a conversion of pages is to write.
struct PlannedResults {
  std::string firstResultFile;  ///< full name; "" puts the results beside the first page
  bool allowZeroId = false;
  bool force = false;      ///< pages that qualify are converted, too
  bool keepGoing = false;  ///< pages that end the analysis are skipped
};

/// Why the results cannot be written: one of them is an input or a device. The number of results is found out by an
/// analysis in memory, and only when one of the files that are there already makes it count.
std::vector<std::string> refusalsOfResults(ConsoleSystem& system, const SelectedPages& pages,
                                           const PlannedResults& results);

}  // namespace kiv
