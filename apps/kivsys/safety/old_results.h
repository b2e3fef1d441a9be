#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "apps/kivsys/safety/result_files.h"

namespace kiv {

/// What a conversion has made of files that were there under names of its results.
struct OldResults {
  std::size_t replaced = 0;
  std::vector<std::string> left;    ///< paths on the disk of those that are there still
  std::vector<std::string> ranges;  ///< the same for people: "out/WORK0006.MUS to out/WORK0009.MUS"
};

/// Compares what was there with what was written, by full names. A conversion that has written nothing leaves
/// everything as it was, of which there is nothing to say.
OldResults oldResultsAfter(ConsoleSystem& system, const std::vector<NamedResult>& there, const std::string& firstResult,
                           const std::vector<std::string>& written);

/// The line that says so, of a dry run what would be; "" when there were no old results.
std::string oldResultsNote(const OldResults& results, bool isDryRun);

}  // namespace kiv
