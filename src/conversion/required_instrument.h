#pragma once

#include <cstdint>

#include "analysis/first_clef_table.h"
#include "mus/marked_value.h"

namespace kiv {

/// An instrument that every result is to have. What its rest staves look like counts only if no page of the group has a
/// staff of it; unknown and 0 are what an instrument has of which nothing is known.
struct RequiredInstrument {
  std::int16_t instr = 0;
  MarkedValue size;      ///< the staff's P5
  float lines = 0;       ///< the staff's P7
  float key = 0;         ///< the key signature's P5; 0 for none
  MarkedValue clef;      ///< the clef's P5
  float clefHeight = 0;  ///< the clef's P4
};

}  // namespace kiv
