#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "repair/group_evidence.h"
#include "repair/staff_decisions.h"

namespace kiv {

/// Where an id stands that is wrong.
struct DoubtfulId {
  std::string file;  ///< full name
  std::int16_t system = 0;
  std::string staff;   ///< its number in the file, in general number form
  int item = 0;        ///< the number of the staff item or the cue marker in the file, from 1; 0 when it is not known
  bool isCue = false;  ///< it is the id in a cue marker
  IdProblem problem = IdProblem::zero;
  std::int16_t oldId = 0;

  bool operator==(const DoubtfulId&) const = default;
};

/// An id that is proposed in place of one that is wrong.
struct Correction {
  DoubtfulId at;
  std::int16_t newId = 0;
  Confidence confidence = Confidence::guess;
  double margin = 0;   ///< how much likelier the new id is than any other, as a logarithm
  std::string reason;  ///< a sentence in the code page of the pages, without a period
};

/// An id that is wrong, and for which none is proposed.
struct Undecided {
  DoubtfulId at;
  std::vector<std::int16_t> candidates;  ///< the likeliest first
  std::string reason;
};

/// What is proposed for a group, both in the order of its systems, from the top down.
struct Suggestions {
  std::vector<Correction> corrections;
  std::vector<Undecided> undecided;
};

/// Proposes ids for the staves and cue markers of a group whose ids are wrong.
Suggestions suggestIds(const GroupEvidence& group, const ListedInstruments& listed = {});

/// The words for them: "sure", "zero".
const char* nameOf(Confidence confidence);
const char* nameOf(IdProblem problem);

}  // namespace kiv
