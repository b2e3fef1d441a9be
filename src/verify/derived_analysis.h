#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/machine.h"
#include "verify/finding.h"
#include "verify/page_files.h"
#include "verify/page_items.h"

namespace kiv::proof {

/// The first line of a derived report is this text; that of a report adds version, date and time.
constexpr const char* headOfReport = "* KivSystem - ";

/// Report and verdict as the pages require them, derived from the rules alone.
struct DerivedAnalysis {
  std::string report;
  std::string verdict;
  std::optional<Finding> failure;  ///< what ends an analysis of these pages; report and verdict are not complete then
};

/// The files of a page. They are valid until the next call.
using FilesOfPage = std::function<const LoadedPages&(const PageFiles&)>;

/// Derives the analysis of pages. Asks for the files of one page after the other, each once, up to a failure. The
/// report is likely to have that many bytes; a long one would take twice the memory if it had to grow.
DerivedAnalysis deriveAnalysis(Machine& machine, const std::vector<PageFiles>& pages, const FilesOfPage& filesOf,
                               std::size_t reportSize = 0);

}  // namespace kiv::proof
