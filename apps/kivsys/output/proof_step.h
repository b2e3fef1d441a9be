#pragma once

#include <optional>
#include <string>
#include <vector>

#include "apps/kivsys/selection/selection.h"
#include "messages/console_words.h"
#include "verify/verify.h"

namespace kiv {

/// A run of verify, as it was typed.
struct TypedProof {
  const Selection& selection;
  bool hasResults = false;              ///< there is a first result
  const std::string newResult;          ///< the option that names results where there are none yet, after a blank
  bool fit = false;                     ///< of a conversion whose rest staves fit the music
  const std::vector<FoundFile>& pages;  ///< the inputs
  const FileNamer& nameOf;              ///< the names by which users know files
};

/// What is said of a conversion that is not proved.
struct ProofStep {
  std::string reason;               ///< a sentence
  std::string note = {};            ///< a line about options, with its end; "" for none
  std::optional<std::string> next;  ///< the command line that helps
};

/// Why a conversion is not proved, and what helps. A report that is not there, or is of other pages, says nothing about
/// the results. No command line replaces results that are there.
ProofStep stepForProof(const proof::Verification& verification, const TypedProof& typed);

}  // namespace kiv
