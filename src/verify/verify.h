#pragma once

#include <optional>
#include <string>
#include <vector>

#include "analysis/first_clef_table.h"
#include "platform/host.h"
#include "verify/finding.h"
#include "verify/manifest.h"

namespace kiv::proof {

/// What an analysis of the inputs gives today, made anew for the proof.
struct AnalysisAgain {
  std::string report;
  std::string verdict;
  std::string trouble;  ///< why there is no analysis, in words; "" when there is one
  std::vector<std::string> inputs;
  FirstClefTable firstClefs;
};

/// What a conversion was asked for.
struct ConversionToProve {
  std::string firstResultFile;      ///< its full name
  std::optional<bool> showNumbers;  ///< whether results show instrument ids; unknown: as most of them do
};

/// What the proof has looked at.
struct Counts {
  std::size_t inputs = 0;    ///< files
  std::size_t results = 0;   ///< files
  std::size_t carried = 0;   ///< items of the inputs that the results must hold
  std::size_t barlines = 0;  ///< barlines and braces of the inputs, which the results have their own for
  std::size_t leftOut = 0;   ///< items of the inputs on staves that the report does not list
  std::size_t added = 0;     ///< items that a conversion adds
};

struct Verification {
  std::vector<Finding> findings;
  std::vector<DigestedFile> files;  ///< inputs, report, verdict, results; those that can be read
  Counts counts;

  bool proved() const { return findings.empty(); }
};

/// Reads inputs, report, verdict and results again and holds them against what the rules of a conversion say. Nothing
/// is written, and no message is shown.
Verification verify(Host& host, const AnalysisAgain& again, const ConversionToProve& conversion);

}  // namespace kiv::proof
