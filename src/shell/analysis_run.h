#pragma once

#include <string>

#include "shell/kivsystem.h"

namespace kiv {

/// What an Analyze run is asked for.
struct AnalysisOptions {
  std::string inputFolder;        ///< of page names without a folder, with its backslash
  bool allowZeroInstrId = false;  ///< staves without an instrument identifier are no problem
  bool viewReport = false;        ///< shows the report when it is written
};

/// Loads the names. False when there are none to analyze.
bool loadSelection(KivSystem& program);

/// The name of the first result, in the folder of the input.
std::string firstResultFile(const NamesTable& names);

/// Ends the program over a first input file that is named like a first result.
void refuseReservedName(const NamesTable& names);

/// Analyzes the pages of the names table: reports their problems, and writes report and verdict. Anything critical ends
/// the program; what was written stays.
void analyzePages(KivSystem& program, const AnalysisOptions& options);

/// Shows whether the input qualifies, which ends the program. Otherwise returns what follows from the analysis: that
/// the input does not qualify.
std::string_view showAnalysisResult(KivSystem& program);

/// The only judgement that showAnalysisResult returns.
inline constexpr std::string_view notQualified = "Input does NOT qualify for conversion";

}  // namespace kiv
