#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/machine.h"
#include "verify/finding.h"
#include "verify/page_files.h"
#include "verify/page_items.h"

namespace kiv::proof {

/// The first line of a derived report is this text; that of a report adds version, date and time.
constexpr const char* headOfReport = "* KivSystem - ";

/// The verdict as the pages require it, derived from the rules alone.
struct DerivedAnalysis {
  std::string verdict;
  std::optional<Finding> failure;  ///< what ends an analysis of these pages; report and verdict are not complete then
};

/// Is given the derived report from its first line to its last, some lines at a time, each of which ends with CR LF.
using ReportSink = std::function<void(std::string_view lines)>;

/// The files of a page. They are valid until the next call.
using FilesOfPage = std::function<const LoadedPages&(const PageFiles&)>;

/// Derives the analysis of pages. Asks for the files of one page after the other, each once, up to a failure.
DerivedAnalysis deriveAnalysis(Machine& machine, const SelectedPages& pages, const FilesOfPage& filesOf,
                               const ReportSink& report);

}  // namespace kiv::proof
