#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "verify/finding.h"
#include "verify/first_clefs.h"
#include "verify/known_instruments.h"

namespace kiv::proof {

/// An instrument that all results must have. The looks count only if no page has a staff of it.
struct ListedInstrument {
  std::int16_t id = 0;
  std::optional<float> size;
  float lines = 0;            ///< 0 is unknown
  float key = 0;              ///< 0 for none
  std::optional<float> clef;  ///< its kind
  float clefHeight = 0;
};

/// The instruments of the records, and after them those that only the list has. Their clefs are added to the first
/// clefs of the group.
KnownInstruments knownInstruments(const std::vector<Record>& records, const std::vector<ListedInstrument>& listed,
                                  FirstClefs& firstClefs);

/// A finding for every instrument of the records that is not listed, unless nothing is. Staves without an id need not
/// be.
std::vector<Finding> compareWithList(const Records& records, const std::vector<ListedInstrument>& listed);

}  // namespace kiv::proof
