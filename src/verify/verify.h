#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"
#include "platform/machine.h"
#include "verify/finding.h"
#include "verify/listed_instruments.h"
#include "verify/manifest.h"

namespace kiv::proof {

/// The options of the conversion to be proved.
struct ConversionToProve {
  std::string firstResultFile;      ///< its full name
  std::optional<bool> showNumbers;  ///< whether results show instrument ids; nullopt: to be seen from the results
  bool fits = false;                ///< whether rest staves, braces and brackets are to fit the music
  std::vector<ListedInstrument> listed = {};  ///< empty: exactly the instruments of the pages
};

/// What was compared.
struct Counts {
  std::size_t inputs = 0;    ///< files
  std::size_t results = 0;   ///< files
  std::size_t carried = 0;   ///< items of the inputs that the results must hold
  std::size_t barlines = 0;  ///< barlines and braces of the inputs, which a conversion replaces
  std::size_t leftOut = 0;   ///< items of the inputs on staves that the report does not list
  std::size_t added = 0;     ///< items that a conversion adds
};

struct Verification {
  std::vector<Finding> findings;
  std::vector<DigestedFile> files;  ///< inputs, report, verdict, results: all that can be read
  Counts counts;

  bool proved() const { return findings.empty(); }
};

/// Shows how far a verification has come: done of all, counted in what the plural names.
using Progress = std::function<void(std::size_t done, std::size_t all, std::string_view plural)>;

/// Reads the pages of a names file, report, verdict and results, and compares them with what follows from the rules of
/// an analysis and a conversion. Nothing is written, and no message is shown.
Verification verify(
    Files& files, Machine& machine, const std::string& namesFile, const ConversionToProve& conversion,
    const Progress& progress = [](std::size_t, std::size_t, std::string_view) {});

}  // namespace kiv::proof
