#pragma once

#include <optional>
#include <string>
#include <vector>

#include "apps/kivsys/commands/convert_command.h"
#include "apps/kivsys/layout/listed_conversion.h"
#include "apps/kivsys/safety/result_folder.h"
#include "conversion/fitted_staves.h"
#include "platform/console/console_system.h"

namespace kiv {

/// Where the results go, and which instruments they have at least.
struct ResultPlan {
  const std::string& firstResultFile;
  const ResultFolder* folder = nullptr;  ///< null for results beside the first page
  ListedConversion listed = {};
};

/// How the conversion makes rest staves.
RestStaves restStavesOf(const ConvertOptions& options);

/// Whether threads write results and compare them with the music while the next systems are converted.
bool goesAhead(const ConvertOptions& options);

/// The folder of a result that was typed; nullopt for results beside the first page, and for those like the panel's.
std::optional<ResultFolder> folderOfResults(ConsoleSystem& system, const ConvertOptions& options,
                                            const std::string& firstResultFile);

/// Why the run would write over a page, or cannot write its results. None: it can.
std::vector<std::string> refusalsOf(ConsoleSystem& system, const ConvertOptions& options, const SelectedPages& pages,
                                    const ResultPlan& results);

/// Why the pages cannot be converted with the table of instruments. An instrument of the table that no page has is a
/// reason to convert, so that the options then force the conversion.
std::vector<std::string> refusalsOfLayout(ConsoleSystem& system, ConvertOptions& options, ListedConversion& listed);

/// The folders of report, verdict and results, as the disk names them. One that is missing is nobody's yet.
std::vector<std::string> writtenFolders(ConsoleSystem& system, const ConvertOptions& options,
                                        const SelectedPages& pages, const ResultPlan& results);

}  // namespace kiv
