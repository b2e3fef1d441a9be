#pragma once

#include <string>
#include <string_view>

#include "analysis/analysis_observer.h"
#include "analysis/systems_of_report.h"
#include "shell/kivsystem.h"

namespace kiv {

/// What an Analyze run is asked for.
struct AnalysisOptions {
  bool allowZeroInstrId = false;         ///< staves without an instrument identifier are no problem
  bool viewReport = false;               ///< shows the report when it is written
  AnalysisObserver* observer = nullptr;  ///< is given what is read, if there is one
  SystemsOfReport* systems = nullptr;    ///< if there are some, they are found without a report and a verdict
};

/// What an analysis finds out about the input as a whole.
enum class Qualification {
  qualifies,       ///< it can be used as it is
  doesNotQualify,  ///< it needs a conversion
};

/// Loads the names. False when there are none to analyze.
bool loadSelection(KivSystem& program);

/// The name of the first result, in the folder of the input.
std::string firstResultFile(Machine& machine, const NamesTable& names);

/// Ends the program over a first input file that is named like a first result.
void refuseReservedName(const NamesTable& names);
/// Whether a first page of this name, in upper case, is refused.
bool isReservedName(std::string_view name);

/// Analyzes the pages of the names table: reports their problems, and writes the report. Anything critical ends the
/// program; what was written stays.
void analyzePages(KivSystem& program, const AnalysisOptions& options);

/// Writes the verdict on the report.
void writeVerdict(KivSystem& program);

/// Loads the names, analyzes the pages and writes the verdict, as for a sibling tool: without the messages that close
/// an analysis at the panel. Without input the program ends.
void analyzeSelection(KivSystem& program, const AnalysisOptions& options);

/// Shows whether the input qualifies. If so, that ends the program; a result that is returned is doesNotQualify.
Qualification showAnalysisResult(KivSystem& program);

}  // namespace kiv
