#pragma once

#include <map>
#include <string>
#include <vector>

#include "apps/kivsys/corrections/correction_tables.h"
#include "apps/kivsys/selection/selected_pages.h"

namespace kiv {

/// What a run does with pages that cannot be used.
enum class CorrectedBadPages {
  refused,
  skipped,  ///< with their corrections
};

/// Lets the system read the selected pages with the corrections of these tables; no page is changed. Adds the tables to
/// the inputs of the run. Returns why not, a line for each correction that does not fit its page; then the pages are
/// read as they are.
std::vector<std::string> correctOnReading(ConsoleSystem& system, SelectedPages& pages, const TableOptions& options,
                                          CorrectedBadPages badPages);

/// What tables make of the selected pages.
struct CorrectedGroupPages {
  std::map<std::string, std::string> pages;  ///< the bytes of those that change, by their names of the core
  /// Why corrections do not fit the pages, a line each, as commands say it that apply them. None: all fit.
  std::vector<std::string> errors;
};

/// Corrects the pages in memory. Corrections of pages that cannot be read are not looked at.
CorrectedGroupPages correctedBy(ConsoleSystem& system, const SelectedPages& pages, const TableOptions& options);

/// The line that says what is corrected.
std::string correctionNote(const PageCorrections& corrections);

}  // namespace kiv
