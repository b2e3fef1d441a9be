#pragma once

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

/// Why corrections of these tables do not fit the selected pages, a line each, as commands say it that apply them.
/// Those of pages that cannot be read are not looked at. None: all fit.
std::vector<std::string> misfitsOfTables(ConsoleSystem& system, const SelectedPages& pages,
                                         const TableOptions& options);

/// The line that says what is corrected.
std::string correctionNote(const PageCorrections& corrections);

}  // namespace kiv
